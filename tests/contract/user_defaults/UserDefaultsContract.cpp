#include <platform/fake/FakeUserDefaults.h>
#include <platform/linux/storage/JsonUserDefaults.h>
#include <support/FakeClock.h>
#include <support/LogCapture.h>
#include <support/ScratchFolder.h>

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace tulvane {
namespace {

using test::FakeClock;
using test::LogCapture;
using test::ScratchFolder;

const QString ownDomain = QStringLiteral("com.dunio.Tulvane");
const QString otherDomain = QStringLiteral("com.example.Other");

/// Each backend opens views on one store ("processes"), and knows how to break writing and another domain.
class FakeBackend final {
public:
    std::unique_ptr<UserDefaults> open() { return std::make_unique<FakeUserDefaults>(m_store); }
    std::unique_ptr<UserDefaults> openOther()
    {
        // What another application stores is its own domain, written by its own program.
        return std::make_unique<FakeUserDefaults>(m_otherStore);
    }
    void shareOther() { (*m_store)[otherDomain] = m_otherStore->value(FakeUserDefaults::domainName); }
    static void breakOther(UserDefaults& defaults)
    {
        dynamic_cast<FakeUserDefaults&>(defaults).failDomain(
            otherDomain, DefaultsError::unreadable(otherDomain, u"broken"_qs));
    }
    static void breakWrites(UserDefaults& defaults)
    {
        dynamic_cast<FakeUserDefaults&>(defaults).failWrites(DefaultsError::notWritten(u"x"_qs, u"full"_qs));
    }
    static void mendWrites(UserDefaults& defaults)
    {
        dynamic_cast<FakeUserDefaults&>(defaults).failWrites({});
    }

private:
    std::shared_ptr<FakeUserDefaults::Store> m_store = std::make_shared<FakeUserDefaults::Store>();
    std::shared_ptr<FakeUserDefaults::Store> m_otherStore = std::make_shared<FakeUserDefaults::Store>();
};

class JsonBackend final {
public:
    std::unique_ptr<UserDefaults> open() { return make(ownDomain); }
    std::unique_ptr<UserDefaults> openOther() { return make(otherDomain); }
    void shareOther() {}
    void breakOther(UserDefaults&) { m_folder.write(otherDomain + u".json", "{\"cut\": "); }
    // A folder under the name of the file that each write needs on its way: no user can write that.
    void breakWrites(UserDefaults&) { ASSERT_TRUE(QDir().mkdir(blocked())); }
    void mendWrites(UserDefaults&) { ASSERT_TRUE(QDir().rmdir(blocked())); }

private:
    [[nodiscard]] QString blocked() const { return m_folder.file(ownDomain + u".json.new"); }
    std::unique_ptr<UserDefaults> make(const QString& domain)
    {
        return std::make_unique<JsonUserDefaults>(m_folder.path(), domain, m_clock);
    }

    ScratchFolder m_folder;
    FakeClock m_clock;
};

template <class Backend>
struct UserDefaultsContract : ::testing::Test {
    Backend backend;
    std::unique_ptr<UserDefaults> defaults = backend.open();
    LogCapture log; // failed writes are logged; that is no news here
};

using Backends = ::testing::Types<FakeBackend, JsonBackend>;
TYPED_TEST_SUITE(UserDefaultsContract, Backends);

void expectSame(const QVariant& found, const QVariant& expected)
{
    EXPECT_EQ(found, expected);
    EXPECT_EQ(found.typeId(), expected.typeId());
}

TYPED_TEST(UserDefaultsContract, AnAbsentKeyHasNoValue)
{
    EXPECT_FALSE(this->defaults->value(u"absent"_qs).isValid());
    EXPECT_FALSE(this->defaults->contains(u"absent"_qs));
}

TYPED_TEST(UserDefaultsContract, EveryTypeComesBackAsItWentInAlsoInAnotherProcess)
{
    const QVariantMap values{
        {u"yes"_qs, true},
        {u"no"_qs, false},
        {u"zero"_qs, qint64{0}},
        {u"least"_qs, std::numeric_limits<qint64>::min()},
        {u"most"_qs, std::numeric_limits<qint64>::max()},
        {u"beyond"_qs, std::numeric_limits<quint64>::max()},
        {u"whole double"_qs, 1.0},
        {u"tenth"_qs, 0.1},
        {u"tiny"_qs, std::numeric_limits<double>::denorm_min()},
        {u"empty"_qs, u""_qs},
        {u"text"_qs, QString(u"Åse 🎈 \"\\ \n\t" % QChar(u'\0') % u"x")},
        {u"list"_qs,
         QVariantList{u"a"_qs, qint64{1}, 1.0, true, QVariantList{}, QVariant::fromValue(nullptr)}},
        {u"object"_qs, QVariantMap{{u"b"_qs, QVariantMap{}}, {u"a"_qs, 2.5}, {u""_qs, qint64{3}}}}};
    for (auto item = values.cbegin(); item != values.cend(); ++item) {
        ASSERT_TRUE(this->defaults->set(item.key(), item.value())) << qPrintable(item.key());
        expectSame(this->defaults->value(item.key()), item.value());
    }
    const auto other = this->backend.open();
    for (auto item = values.cbegin(); item != values.cend(); ++item)
        expectSame(other->value(item.key()), item.value());
    EXPECT_EQ(other->domain(ownDomain).value(), values);
}

TYPED_TEST(UserDefaultsContract, RelatedTypesBecomeTheirStoredOnes)
{
    const auto expectStored = [this](const QVariant& given, const QVariant& stored) {
        ASSERT_TRUE(this->defaults->set(u"key"_qs, given)) << given.typeName();
        expectSame(this->defaults->value(u"key"_qs), stored);
    };
    expectStored(5, qint64{5});
    expectStored(5U, qint64{5});
    expectStored(quint64{5}, qint64{5});
    expectStored(0.5F, 0.5);
    expectStored(QStringList{u"nb"_qs, u"en"_qs}, QVariantList{u"nb"_qs, u"en"_qs});
    expectStored(QStringList{}, QVariantList{});
    expectStored(QVariantMap{{u"n"_qs, 1}}, QVariantMap{{u"n"_qs, qint64{1}}});
}

TYPED_TEST(UserDefaultsContract, WhatCannotBeStoredChangesNothing)
{
    ASSERT_TRUE(this->defaults->set(u"key"_qs, u"before"_qs));
    for (const QVariant& wrong :
         {QVariant(), QVariant::fromValue(nullptr), QVariant(std::numeric_limits<double>::infinity()),
          QVariant(std::numeric_limits<double>::quiet_NaN()), QVariant(QByteArray("bytes")),
          QVariant(QVariantList{QVariant()}), QVariant(QVariantMap{{u"a"_qs, QByteArray("x")}})}) {
        const auto result = this->defaults->set(u"key"_qs, wrong);
        ASSERT_FALSE(result) << wrong.typeName();
        EXPECT_EQ(result.error(), DefaultsError::notStorable(u"key"_qs));
        EXPECT_EQ(this->defaults->value(u"key"_qs), u"before"_qs);
    }
}

TYPED_TEST(UserDefaultsContract, SettingAgainReplacesTheValueAndItsType)
{
    ASSERT_TRUE(this->defaults->set(u"key"_qs, u"text"_qs));
    ASSERT_TRUE(this->defaults->set(u"key"_qs, true));
    expectSame(this->backend.open()->value(u"key"_qs), true);
}

TYPED_TEST(UserDefaultsContract, RemovingMakesAKeyAbsentEverywhere)
{
    ASSERT_TRUE(this->defaults->set(u"key"_qs, 1));
    ASSERT_TRUE(this->defaults->set(u"other"_qs, 2));
    ASSERT_TRUE(this->defaults->remove(u"key"_qs));
    EXPECT_FALSE(this->defaults->contains(u"key"_qs));
    EXPECT_FALSE(this->backend.open()->contains(u"key"_qs));
    EXPECT_TRUE(this->backend.open()->contains(u"other"_qs));
    EXPECT_TRUE(this->defaults->remove(u"key"_qs)) << "an absent key is no error";
}

TYPED_TEST(UserDefaultsContract, AnotherProcesssWriteShowsAtTheNextRead)
{
    const auto other = this->backend.open();
    EXPECT_FALSE(this->defaults->contains(u"key"_qs));
    ASSERT_TRUE(other->set(u"key"_qs, 1));
    expectSame(this->defaults->value(u"key"_qs), qint64{1});
    ASSERT_TRUE(other->set(u"key"_qs, 2));
    expectSame(this->defaults->value(u"key"_qs), qint64{2});
    ASSERT_TRUE(other->remove(u"key"_qs));
    EXPECT_FALSE(this->defaults->contains(u"key"_qs));
}

TYPED_TEST(UserDefaultsContract, WritesToDifferentKeysDoNotUndoEachOther)
{
    const auto other = this->backend.open();
    for (int i = 0; i < 10; ++i) {
        ASSERT_TRUE(this->defaults->set(u"mine%1"_qs.arg(i), i));
        ASSERT_TRUE(other->set(u"theirs%1"_qs.arg(i), i));
    }
    EXPECT_EQ(this->backend.open()->domain(ownDomain).value().size(), 20);
}

TYPED_TEST(UserDefaultsContract, AFailedWriteHoldsAndGoesOutWithTheNext)
{
    ASSERT_TRUE(this->defaults->set(u"gone"_qs, 1));
    ASSERT_NO_FATAL_FAILURE(this->backend.breakWrites(*this->defaults));
    const auto failed = this->defaults->set(u"held"_qs, u"Åse"_qs);
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().kind(), DefaultsError::Kind::notWritten);
    ASSERT_FALSE(this->defaults->remove(u"gone"_qs));
    EXPECT_EQ(this->defaults->value(u"held"_qs), u"Åse"_qs);
    EXPECT_FALSE(this->defaults->contains(u"gone"_qs));
    EXPECT_FALSE(this->backend.open()->contains(u"held"_qs));
    EXPECT_TRUE(this->backend.open()->contains(u"gone"_qs));
    ASSERT_NO_FATAL_FAILURE(this->backend.mendWrites(*this->defaults));
    ASSERT_TRUE(this->defaults->set(u"next"_qs, 2));
    const QVariantMap expected{{u"held"_qs, u"Åse"_qs}, {u"next"_qs, qint64{2}}};
    EXPECT_EQ(this->backend.open()->domain(ownDomain).value(), expected);
}

TYPED_TEST(UserDefaultsContract, AnotherDomainIsReadWholeAndAMissingOneIsEmpty)
{
    EXPECT_EQ(this->defaults->domain(u"com.example.Nowhere"_qs).value(), QVariantMap());
    EXPECT_EQ(this->defaults->domain(u"../escape"_qs).value(), QVariantMap());
    const auto other = this->backend.openOther();
    ASSERT_TRUE(other->set(u"a"_qs, 1));
    ASSERT_TRUE(other->set(u"b"_qs, QStringList{u"x"_qs}));
    this->backend.shareOther();
    const QVariantMap expected{{u"a"_qs, qint64{1}}, {u"b"_qs, QVariantList{u"x"_qs}}};
    EXPECT_EQ(this->defaults->domain(otherDomain).value(), expected);
    EXPECT_FALSE(this->defaults->contains(u"a"_qs)) << "it is not mixed into this one";
}

TYPED_TEST(UserDefaultsContract, AnotherDomainThatMakesNoSenseIsAnError)
{
    this->backend.breakOther(*this->defaults);
    const auto domain = this->defaults->domain(otherDomain);
    ASSERT_FALSE(domain);
    EXPECT_EQ(domain.error().kind(), DefaultsError::Kind::unreadable);
}

} // namespace
} // namespace tulvane
