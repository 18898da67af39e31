#include "Fuzzer.h"

#include <base/MessageFrame.h>
#include <platform/linux/transfers/TransferMessages.h>
#include <speech/device/HelperMessages.h>

#include <QJsonDocument>

// The pipes and sockets between the program and its helpers, in pieces of any size.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tulvane;
    const QByteArray bytes = test::bytesOf(data, size);
    if (const auto request = helper::requestOf(bytes))
        test::promise(helper::requestOf(helper::bytesOf(*request)).has_value(),
                      "a request can be sent again");
    if (const auto answer = helper::answerOf(bytes))
        test::promise(helper::answerOf(helper::bytesOf(*answer)).has_value(), "an answer can be sent again");

    MessageFrames whole;
    whole.add(bytes);
    MessageFrames pieces;
    QByteArrayList first;
    QByteArrayList second;
    while (const auto message = whole.next())
        first.append(*message);
    for (const char byte : bytes) {
        pieces.add(QByteArray(1, byte));
        while (const auto message = pieces.next())
            second.append(*message);
    }
    test::promise(first == second && whole.isBroken() == pieces.isBroken(),
                  "pieces of any size give the same");

    const QJsonObject message = QJsonDocument::fromJson(bytes).object();
    if (const auto request = transfers::requestIn(message)) {
        test::promise(request->url.isValid(), "a request has an address");
        test::promise(transfers::requestIn(transfers::startMessage(*request)).has_value(),
                      "a transfer's request can be sent again");
    }
    if (const auto error = transfers::errorIn(message)) {
        const auto again = transfers::errorIn(transfers::completedMessage(QStringLiteral("key"), error));
        test::promise(again && *again == *error, "a transfer's error can be sent again");
    }
    static_cast<void>(transfers::numberIn(message, "received", -1));
    return 0;
}
