#include "platform/reveal.h"

#include "support/scoped_environment.h"
#include "support/test_folder.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

/// What stands on the bus under the name of the file managers.
class FileManager : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        calls += message.interface() + u' ' + message.path() + u' ' + message.member();
        arguments = message.arguments();
        return connection.send(refuses ? message.createErrorReply(QDBusError::Failed, u"no"_s)
                                       : message.createReply());
    }

    bool refuses = false;
    QStringList calls;
    QVariantList arguments;
};

} // namespace

/// Real calls over a message bus of the test's own, and a real process in the place of the
/// desktop's opener of folders.
class RevealLinuxTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();
    void asksTheFileManagerForTheItem_data();
    void asksTheFileManagerForTheItem();
    void opensTheFolderWithoutAFileManager_data();
    void opensTheFolderWithoutAFileManager();
    void opensTheFolderWhereTheFileManagerRefuses();

private:
    QString address();
    QDBusConnection managersConnection() const { return QDBusConnection(u"manager"_s); }
    QString opened() const;
    void takeName() { QVERIFY(managersConnection().registerService(m_name)); }

    const QString m_name = u"org.freedesktop.FileManager1"_s;
    TestFolder m_folder;
    std::optional<ScopedVariable> m_path;
    std::optional<ScopedVariable> m_bus;
    QProcess m_daemon;
    FileManager m_manager;
};

/// A bus that starts no programs by itself.
QString RevealLinuxTest::address()
{
    const QString config =
        m_folder.write(u"bus.conf"_s, "<busconfig><type>session</type><listen>unix:tmpdir=" +
                                          m_folder.path().toUtf8() +
                                          "</listen><policy context=\"default\">"
                                          "<allow send_destination=\"*\" eavesdrop=\"true\"/>"
                                          "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy>"
                                          "</busconfig>");
    m_daemon.start(u"dbus-daemon"_s,
                   {u"--config-file="_s + config, u"--nofork"_s, u"--print-address=1"_s});
    QByteArray line;
    while (!line.endsWith('\n') && m_daemon.waitForReadyRead(10000))
        line += m_daemon.readLine();
    return QString::fromUtf8(line.trimmed());
}

void RevealLinuxTest::initTestCase()
{
    const QString bus = address();
    QVERIFY2(!bus.isEmpty(), m_daemon.readAllStandardError().constData());
    m_bus.emplace("DBUS_SESSION_BUS_ADDRESS", bus.toUtf8());
    const QString opener =
        m_folder.write(u"bin/xdg-open"_s, "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"${0%/*}/../part\"\n"
                                          "mv \"${0%/*}/../part\" \"${0%/*}/../opened\"\n");
    QVERIFY(QFile::setPermissions(opener, QFile::ReadOwner | QFile::ExeOwner));
    m_path.emplace("PATH", m_folder.path(u"bin"_s).toUtf8() + ':' + qgetenv("PATH"));
    QDBusConnection connection = QDBusConnection::connectToBus(bus, u"manager"_s);
    QVERIFY2(connection.isConnected(), qPrintable(connection.lastError().message()));
    QVERIFY(connection.registerVirtualObject(
        u"/org"_s, &m_manager, QDBusConnection::VirtualObjectRegisterOption::SubPath));
}

void RevealLinuxTest::init()
{
    m_manager.calls.clear();
    m_manager.arguments.clear();
    m_manager.refuses = false;
    QFile::remove(m_folder.path(u"opened"_s));
}

void RevealLinuxTest::cleanup()
{
    managersConnection().unregisterService(m_name);
}

void RevealLinuxTest::cleanupTestCase()
{
    QDBusConnection::disconnectFromBus(u"manager"_s);
    m_daemon.terminate();
    QVERIFY(m_daemon.waitForFinished());
}

/// The arguments of the opener, one a line.
QString RevealLinuxTest::opened() const
{
    return QFile::exists(m_folder.path(u"opened"_s)) ? QString::fromUtf8(m_folder.read(u"opened"_s))
                                                     : QString();
}

void RevealLinuxTest::asksTheFileManagerForTheItem_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("url");
    QTest::newRow("file") << u"/media/GIG/rekordbox.xml"_s << u"file:///media/GIG/rekordbox.xml"_s;
    QTest::newRow("folder") << u"/media/GIG/_Serato_ backup"_s
                            << u"file:///media/GIG/_Serato_%20backup"_s;
    QTest::newRow("marks of a URL")
        << u"/media/50% #1?/é"_s << u"file:///media/50%25%20%231%3F/%C3%A9"_s;
}

void RevealLinuxTest::asksTheFileManagerForTheItem()
{
    QFETCH(const QString, path);
    QFETCH(const QString, url);
    takeName();
    platform::revealInFileManager(path);
    QVERIFY(m_manager.calls.isEmpty());
    QTRY_COMPARE(m_manager.calls,
                 QStringList(u"org.freedesktop.FileManager1 /org/freedesktop/FileManager1 "
                             "ShowItems"_s));
    QCOMPARE(m_manager.arguments, QVariantList({QStringList{url}, QString()}));
    QTest::qWait(100);
    QCOMPARE(opened(), QString());
}

void RevealLinuxTest::opensTheFolderWithoutAFileManager_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("folder");
    QTest::newRow("file") << u"/media/GIG USB/rekordbox.xml"_s << u"/media/GIG USB\n"_s;
    QTest::newRow("at the root") << u"/rekordbox.xml"_s << u"/\n"_s;
}

void RevealLinuxTest::opensTheFolderWithoutAFileManager()
{
    QFETCH(const QString, path);
    platform::revealInFileManager(path);
    QTRY_VERIFY(!opened().isEmpty());
    QTEST(opened(), "folder");
    QVERIFY(m_manager.calls.isEmpty());
}

void RevealLinuxTest::opensTheFolderWhereTheFileManagerRefuses()
{
    takeName();
    m_manager.refuses = true;
    platform::revealInFileManager(u"/media/GIG/rekordbox.xml"_s);
    QTRY_COMPARE(opened(), u"/media/GIG\n"_s);
    QCOMPARE(m_manager.calls.size(), 1);
}

QTEST_GUILESS_MAIN(RevealLinuxTest)
#include "reveal_linux_test.moc"
