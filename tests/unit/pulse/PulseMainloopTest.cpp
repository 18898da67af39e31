#include <platform/linux/pulse/PulseMainloop.h>
#include <support/Await.h>

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace tulvane;
using namespace tulvane::test;

namespace {

QByteArray nameIn(const QString& folder)
{
    QFile file(folder + QStringLiteral("/comm"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

QList<QByteArray> threadNames()
{
    const QDir tasks(QStringLiteral("/proc/self/task"));
    QList<QByteArray> names;
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        names.append(nameIn(tasks.filePath(task)));
    return names;
}

} // namespace

TEST(PulseMainloopTest, ItsThreadHasANameAndTheProgramKeepsItsOwn)
{
    const QByteArray before = nameIn(QStringLiteral("/proc/self"));
    const PulseMainloop loop;
    EXPECT_TRUE(waitUntil([] { return threadNames().contains("tulvane-audio"); }));
    EXPECT_EQ(nameIn(QStringLiteral("/proc/self")), before);
}
