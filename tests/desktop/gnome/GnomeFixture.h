#pragma once

#include <support/Await.h>
#include <support/Paths.h>
#include <support/wayland/WaylandDesktop.h>

#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

#include <memory>

namespace tulvane::test {

/// One GNOME desktop for a suite: it takes five seconds to start.
class GnomeTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (WaylandDesktop::missing(WaylandDesktop::Kind::gnome).isEmpty())
            desktop = std::make_unique<WaylandDesktop>(WaylandDesktop::Kind::gnome,
                                                       WaylandDesktop::Options{.x11 = true});
    }
    static void TearDownTestSuite() { desktop.reset(); }
    void SetUp() override { TULVANE_NEEDS(WaylandDesktop::Kind::gnome); }
    void TearDown() override
    {
        if (m_field != nullptr) {
            m_field->terminate();
            m_field->waitForFinished();
        }
    }

    void startField(const QString& kind = QStringLiteral("view"))
    {
        m_field =
            &desktop->start(QStringLiteral("/usr/bin/python3"),
                            {sourceFolder() + QStringLiteral("/tests/support/targets/gtk_target.py"), kind});
        ASSERT_TRUE(waitUntil([&] { return m_field->readAllStandardOutput().contains("ready"); }));
    }
    [[nodiscard]] QString text() { return report()[QStringLiteral("text")].toString(); }
    [[nodiscard]] bool hasFocus() { return report()[QStringLiteral("focus")] == QStringLiteral("field"); }
    [[nodiscard]] QJsonObject report()
    {
        const int id = ++m_lastId;
        m_field->write("{\"id\": " + QByteArray::number(id) + ", \"do\": \"report\"}\n");
        QByteArray heard;
        const QByteArray mark = "{\"id\": " + QByteArray::number(id) + ",";
        EXPECT_TRUE(waitUntil([&] {
            heard += m_field->readAllStandardOutput();
            return heard.contains(mark) && heard.indexOf('\n', heard.indexOf(mark)) > 0;
        }));
        const qsizetype start = heard.indexOf(mark);
        const QByteArray line = heard.mid(start, heard.indexOf('\n', start) - start);
        return QJsonDocument::fromJson(line).object();
    }
    /// Empty where none is in force.
    [[nodiscard]] static QString engine()
    {
        return QString::fromUtf8(desktop->run(QStringLiteral("sh"),
                                              {QStringLiteral("-c"), QStringLiteral("ibus engine || true")}))
            .trimmed();
    }

    inline static std::unique_ptr<WaylandDesktop> desktop;

private:
    QProcess* m_field = nullptr;
    int m_lastId = 0;
};

} // namespace tulvane::test
