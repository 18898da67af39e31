#include <platform/linux/transfers/TransferFolder.h>

#include <QCoreApplication>

/// Saves the record of a download that has got so far; the status says whether it was saved.
///   record_writer FOLDER BYTES
int main(int argc, char** argv)
{
    using namespace tulvane::transfers;
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    TransferRecord record =
        TransferRecord::of({QUrl(QStringLiteral("https://hub.example/model.bin")), {}, 539'000'000});
    record.safeBytes = arguments.at(2).toLongLong();
    return TransferFolder(arguments.at(1)).save(record) ? 0 : 1;
}
