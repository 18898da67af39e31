#include <platform/linux/caller/BusAddress.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

/// The variables of the session for as long as it lives.
class Variables {
public:
    Variables(const QByteArray& address, const QByteArray& folder)
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        qputenv("XDG_RUNTIME_DIR", folder);
    }
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;
    ~Variables()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_address);
        qputenv("XDG_RUNTIME_DIR", m_folder);
    }

private:
    QByteArray m_address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    QByteArray m_folder = qgetenv("XDG_RUNTIME_DIR");
};

} // namespace

TEST(BusAddress, NamesSocketsByPathAndByAbstractName)
{
    EXPECT_EQ(busSockets("unix:path=/run/user/1000/bus"), QByteArrayList{"/run/user/1000/bus"});
    EXPECT_EQ(busSockets("unix:abstract=/tmp/dbus-x,guid=0a1b"),
              (QByteArrayList{QByteArray("\0/tmp/dbus-x", 12)}));
    EXPECT_EQ(busSockets("unix:guid=0a1b,path=/a;unix:path=/b"), (QByteArrayList{"/a", "/b"}));
    EXPECT_EQ(busSockets("unix:path=/with%20space%2c"), QByteArrayList{"/with space,"});
}

TEST(BusAddress, LeavesOutWhatIsNoSocketOfThisMachine)
{
    for (const char* address :
         {"", ";", "unix:", "unix:path=", "unix:path", "unix:runtime=yes",
          "autolaunch:", "tcp:host=localhost,port=1", "unixexec:path=/bin/true", "path=/a"})
        EXPECT_EQ(busSockets(address), QByteArrayList()) << address;
    EXPECT_EQ(busSockets("tcp:host=localhost;unix:path=/a"), QByteArrayList{"/a"});
}

TEST(BusAddress, TheSessionsIsTheVariablesOrLiesInTheFolderOfTheLogin)
{
    {
        const Variables session("unix:path=/a", "/run/user/1");
        EXPECT_EQ(sessionBusSockets(), QByteArrayList{"/a"});
    }
    {
        const Variables session("", "/run/user/1");
        EXPECT_EQ(sessionBusSockets(), QByteArrayList{"/run/user/1/bus"});
    }
    {
        const Variables session("", "");
        EXPECT_EQ(sessionBusSockets(), QByteArrayList());
    }
}

} // namespace tulvane::test
