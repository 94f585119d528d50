// libFuzzer target for the companion channel's messages: any program of the
// user can connect and send lines, so every line is parsed without crashing,
// what the companion then shows is computed without overflow, and a status
// line the application sends reads back as it was sent.

#include "FuzzCheck.h"
#include "companions/statusbar/StatusbarOptions.h"
#include "platform/CompanionChannel.h"
#include "platform/SingleInstance.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    for (const QByteArray &line : input.split('\n')) {
        CompanionChannel::Status status;
        switch (CompanionChannel::parseMessage(line, &status)) {
        case CompanionChannel::Message::Quit:
            check(line + '\n' == CompanionChannel::quitMessage());
            break;
        case CompanionChannel::Message::Idle:
            check(line + '\n' == CompanionChannel::idleMessage());
            break;
        case CompanionChannel::Message::Status: {
            check(statusSummary(status).startsWith(status.operation));
            check(statusToolTip(&status).startsWith(QStringLiteral("ZELMOR Helper")));
            const QByteArray sent = CompanionChannel::statusMessage(status.operation, status.value,
                                                                    status.maximum, status.label);
            check(sent.endsWith('\n') && sent.count('\n') == 1);
            CompanionChannel::Status back;
            check(CompanionChannel::parseMessage(sent.chopped(1), &back)
                  == CompanionChannel::Message::Status);
            check(back.operation == status.operation && back.value == status.value
                  && back.maximum == status.maximum && back.label == status.label);
            break;
        }
        case CompanionChannel::Message::Problem: {
            check(status.problem);
            const QByteArray sent = CompanionChannel::problemMessage(status.operation, status.label);
            check(sent.endsWith('\n') && sent.count('\n') == 1);
            CompanionChannel::Status back;
            check(CompanionChannel::parseMessage(sent.chopped(1), &back)
                  == CompanionChannel::Message::Problem);
            check(back.operation == status.operation && back.label == status.label);
            break;
        }
        case CompanionChannel::Message::Unknown:
            break;
        }
        // The other local socket's one message is a fixed line.
        check((line + '\n' == SingleInstance::activationMessage()) == (line == "activate"));
    }
    return 0;
}
