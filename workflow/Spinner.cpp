#include "workflow/Spinner.h"

Spinner::Spinner(QWidget *parent) : QWidget(parent)
{
    setFixedSize(16, 16);
}

void Spinner::startAnimation()
{
    m_animating = true;
}

void Spinner::stopAnimation()
{
    m_animating = false;
}
