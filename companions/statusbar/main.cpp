// Placeholder until the companion is built.
int main()
{
    return 0;
}
