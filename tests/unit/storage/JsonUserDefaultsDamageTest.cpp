#include "DefaultsFolder.h"

#include <platform/linux/storage/PreferencesDocument.h>
#include <support/Soak.h>

#include <gtest/gtest.h>

#include <random>

namespace tulvane {
namespace {

struct DamagedDefaults : ::testing::Test, test::DefaultsFolder {
    test::LogCapture log;

    [[nodiscard]] QString aside(const QString& tail = QString()) const
    {
        return folder.file(name + u".damaged-20261120-120000" + tail);
    }
};

TEST_F(DamagedDefaults, AreSetAsideToldAndLogged)
{
    for (const QByteArray& damage :
         {QByteArray(R"({"a": 1, "b)"), QByteArray("not JSON at all"), QByteArray("[1]"),
          QByteArray(64, '\0'), QByteArray("{\"a\": \"\xff\xfe\"}")}) {
        test::DefaultsFolder place;
        log.clear();
        place.write(damage);
        JsonUserDefaults defaults = place.open();
        const QString kept = place.folder.file(name + u".damaged-20261120-120000");
        EXPECT_EQ(troubles(defaults), QList<DefaultsError>{DefaultsError::damaged(place.path(), kept)});
        EXPECT_EQ(place.folder.read(QFileInfo(kept).fileName()), damage);
        EXPECT_FALSE(QFile::exists(place.path()));
        EXPECT_FALSE(defaults.contains(u"a"_qs));
        const QStringList errors = log.texts("settings", QtCriticalMsg);
        ASSERT_EQ(errors.size(), 1);
        EXPECT_TRUE(errors.first().contains(kept)) << qPrintable(errors.first());
        ASSERT_TRUE(defaults.set(u"a"_qs, 2));
        EXPECT_EQ(place.content(), "{\n  \"a\": 2\n}\n");
        EXPECT_EQ(place.folder.read(QFileInfo(kept).fileName()), damage) << "what was kept stays as it was";
    }
}

TEST_F(DamagedDefaults, NeverReplaceAnEarlierOne)
{
    for (const QByteArray& damage : {QByteArray("first"), QByteArray("second"), QByteArray("third")}) {
        write(damage);
        JsonUserDefaults defaults = open();
        EXPECT_EQ(troubles(defaults).size(), 1);
    }
    EXPECT_EQ(folder.read(QFileInfo(aside()).fileName()), "first");
    EXPECT_EQ(folder.read(QFileInfo(aside(u"-2"_qs)).fileName()), "second");
    EXPECT_EQ(folder.read(QFileInfo(aside(u"-3"_qs)).fileName()), "third");
}

TEST_F(DamagedDefaults, AreNoticedWhileTheProgramRuns)
{
    JsonUserDefaults defaults = open();
    ASSERT_TRUE(defaults.set(u"a"_qs, 1));
    QList<DefaultsError> told;
    defaults.setTroubleHandler([&](const DefaultsError& error) {
        told.append(error);
        // A handler may use the preferences: no lock is held around it.
        EXPECT_TRUE(defaults.set(u"fromHandler"_qs, true));
    });
    write("{\"a\": 1,");
    ASSERT_TRUE(defaults.set(u"b"_qs, 2));
    EXPECT_EQ(told, QList<DefaultsError>{DefaultsError::damagedWhileRunning(path(), aside())});
    EXPECT_EQ(folder.read(QFileInfo(aside()).fileName()), "{\"a\": 1,");
    EXPECT_EQ(open().value(u"b"_qs), QVariant(qint64{2}));
    EXPECT_EQ(open().value(u"fromHandler"_qs), QVariant(true));
}

TEST_F(DamagedDefaults, CostNothingThatWasReadBefore)
{
    for (const bool writes : {true, false}) {
        write("{\"a\": 1, \"typed\": \"by hand\"}");
        JsonUserDefaults defaults = open();
        write("{\"a\": 1,");
        EXPECT_EQ(defaults.value(u"a"_qs), QVariant(qint64{1}));
        if (writes) {
            EXPECT_TRUE(defaults.set(u"b"_qs, 2));
        }
        EXPECT_EQ(open().value(u"a"_qs), QVariant(qint64{1})) << "the next start finds it";
        EXPECT_EQ(open().value(u"typed"_qs), u"by hand"_qs);
        EXPECT_EQ(open().contains(u"b"_qs), writes);
    }
}

TEST_F(DamagedDefaults, BehindALinkAreSetAsideBesideTheRealFile)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"real"_qs));
    folder.write(u"real/t.json"_qs, "{");
    ASSERT_TRUE(QFile::link(u"real/t.json"_qs, path()));
    JsonUserDefaults defaults = open();
    const QString kept = folder.file(u"real/t.json.damaged-20261120-120000"_qs);
    EXPECT_EQ(troubles(defaults), QList<DefaultsError>{DefaultsError::damaged(path(), kept)});
    ASSERT_TRUE(defaults.set(u"a"_qs, 1));
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(folder.read(u"real/t.json.damaged-20261120-120000"_qs), "{");
    EXPECT_EQ(folder.read(u"real/t.json"_qs), "{\n  \"a\": 1\n}\n");
}

TEST_F(DamagedDefaults, ThatCannotBeMovedAreNeverWritten)
{
    write("{\"a\": ");
    ASSERT_TRUE(QDir().mkdir(path() + u".lock")); // no lock, no move, for any user
    JsonUserDefaults defaults = open();
    const QList<DefaultsError> told = troubles(defaults);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told.first().kind(), DefaultsError::Kind::damagedInPlace);
    EXPECT_FALSE(defaults.contains(u"a"_qs));
    EXPECT_FALSE(defaults.set(u"a"_qs, 1));
    EXPECT_EQ(defaults.value(u"a"_qs), QVariant(qint64{1}));
    EXPECT_EQ(content(), "{\"a\": ");
    EXPECT_EQ(log.texts("settings", QtCriticalMsg).size(), 2);
}

TEST_F(DamagedDefaults, ABlankFileIsNone)
{
    for (const QByteArray& blank : {QByteArray(), QByteArray(" \n")}) {
        write(blank);
        JsonUserDefaults defaults = open();
        EXPECT_FALSE(defaults.contains(u"a"_qs));
        EXPECT_TRUE(troubles(defaults).isEmpty());
        ASSERT_TRUE(defaults.set(u"a"_qs, 1));
        EXPECT_TRUE(neighbours().isEmpty());
    }
}

TEST_F(DamagedDefaults, OfAnotherDomainAreLeftAlone)
{
    folder.write(u"com.example.Other.json"_qs, "{\"a\": ");
    const JsonUserDefaults defaults = open();
    EXPECT_FALSE(defaults.domain(u"com.example.Other"_qs));
    EXPECT_EQ(folder.read(u"com.example.Other.json"_qs), "{\"a\": ");
}

/// Flips, drops, doubles or cuts bytes of the text, one to four times.
QByteArray mutated(QByteArray text, std::mt19937& random)
{
    const auto below = [&random](qsizetype limit) {
        return static_cast<qsizetype>(random() % std::max<qsizetype>(limit, 1));
    };
    for (qsizetype times = 1 + below(4); times > 0 && !text.isEmpty(); --times) {
        const qsizetype at = below(text.size());
        switch (random() % 5) {
        case 0:
            text[at] = static_cast<char>(random() % 256);
            break;
        case 1:
            text.remove(at, 1 + below(8));
            break;
        case 2:
            text.insert(at, text.mid(at, 1 + below(16)));
            break;
        case 3:
            text.truncate(at);
            break;
        default:
            text.insert(at, QByteArray(1 + below(8), '\0'));
        }
    }
    return text;
}

TEST_F(DamagedDefaults, MutatedAtRandomAreReadOrSetAsideAndNeverLost)
{
    const QByteArray whole =
        "{\n  \"hotkeyMode\": \"hold\",\n  \"maxRecordingSeconds\": 120,\n  \"tenth\": 0.1,\n"
        "  \"AppleLanguages\": [\"nb\", \"en\"],\n  \"o\": {\"k\": null, \"t\": true},\n"
        "  \"vocabularyPrompt\": \"Åse \\\"\\u00e6\\\" 🎈\"\n}\n";
    std::mt19937 random(20261120);
    int damaged = 0;
    int readable = 0;
    const int count = test::soakCount(200, 4000);
    for (int round = 0; round < count; ++round) {
        const QByteArray text = mutated(whole, random);
        write(text);
        JsonUserDefaults defaults = open();
        const QList<DefaultsError> told = troubles(defaults);
        if (told.isEmpty()) {
            ++readable;
            const QVariantMap before = PreferencesDocument::parse(text).value().values();
            ASSERT_TRUE(defaults.set(u"new key"_qs, round));
            QVariantMap expected = before;
            expected.insert(u"new key"_qs, qint64{round});
            EXPECT_EQ(open().domain(domain).value(), expected) << text.constData();
            EXPECT_TRUE(neighbours().isEmpty());
        } else {
            ++damaged;
            ASSERT_EQ(told.size(), 1);
            ASSERT_EQ(told.first().kind(), DefaultsError::Kind::damaged);
            EXPECT_EQ(folder.read(QFileInfo(told.first().detail()).fileName()), text);
            ASSERT_TRUE(defaults.set(u"new key"_qs, round));
            EXPECT_EQ(open().domain(domain).value(), (QVariantMap{{u"new key"_qs, qint64{round}}}));
            ASSERT_TRUE(QFile::remove(told.first().detail()));
        }
    }
    EXPECT_GT(damaged, count / 4);
    EXPECT_GT(readable, count / 20);
}

} // namespace
} // namespace tulvane
