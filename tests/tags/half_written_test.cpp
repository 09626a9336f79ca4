// An audio file is never half written: whichever call of the system fails, and wherever the process
// is killed, its path leads to the old bytes or to the new.

#include "platform/fault_gate.h"
#include "support/tag_builder.h"
#include "support/test_folder.h"
#include "support/tiny_disk.h"
#include "tags/geob_files.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <cerrno>
#include <csignal>

#include <unistd.h>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

Done perform(const QString &operation, const QString &path)
{
    const QByteArray cues = objectPayload("Serato Markers2", QByteArray(5000, 'c'));
    if (operation == "restore"_L1)
        return SeratoGEOB::restoreCueFrames({{u"Serato Markers2"_s, cues}}, path);
    if (operation == "gain"_L1)
        return SeratoGEOB::writeReplayGain(-6.5, path);
    return SeratoGEOB::stripCueFrames(path);
}

using platform::FileOperation;

/// Counts the calls that pass the gate, and acts at those from one number to another.
class Interruption
{
public:
    Interruption(int first, int last, const std::function<int()> &act)
        : m_faults([this, first, last, act](FileOperation operation, const QString &path) {
            if (++m_calls == first) {
                m_operation = operation;
                m_hitTemporary = path.endsWith(".twtmp"_L1);
            }
            return m_calls >= first && m_calls <= last ? act() : 0;
        })
    {}

    int calls() const { return m_calls; }
    /// True if the first call acted upon was this one, and on the temporary.
    bool hitTemporary(FileOperation operation) const
    {
        return m_operation == operation && m_hitTemporary;
    }

private:
    int m_calls = 0;
    FileOperation m_operation = {};
    bool m_hitTemporary = false;
    platform::ScopedFaults m_faults;
};

/// What a child process does: the operation, until the n-th call kills it.
int performUntilKilled(const QString &operation, const QString &path, int call)
{
    const Interruption death(call, call, [] { return ::kill(::getpid(), SIGKILL); });
    return perform(operation, path).has_value() ? 0 : 1;
}

constexpr auto childOption = "--perform-until-killed"_L1;

} // namespace

class HalfWrittenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isNoFileAfterAFailedCall_data();
    void isNoFileAfterAFailedCall();
    void isNoFileAfterTheDiskWentAway_data();
    void isNoFileAfterTheDiskWentAway();
    void isNoFileAfterAKilledProcess_data();
    void isNoFileAfterAKilledProcess();
    void isNoFileOnAFullDisk();

private:
    void addOperations();
    /// Writes the old file afresh, with nothing beside it.
    QString startAfresh();
    QByteArray file() const { return m_folder.read(u"a.mp3"_s); }
    QByteArray expectedAfter(const QString &operation);

    TestFolder m_folder;
    const QByteArray m_old = TagBuilder()
                                 .frame("TIT2", "A title")
                                 .object("Serato Markers2", QByteArray(300, 'o'))
                                 .padding(700)
                                 .audio(QByteArray(150'000, 'a'))
                                 .file();
};

void HalfWrittenTest::addOperations()
{
    QTest::addColumn<QString>("operation");
    for (const char *operation : {"restore", "gain", "strip"})
        QTest::newRow(operation) << QString::fromLatin1(operation);
}

QString HalfWrittenTest::startAfresh()
{
    QFile::remove(m_folder.path(u".a.mp3.twtmp"_s));
    return m_folder.write(u"a.mp3"_s, m_old);
}

QByteArray HalfWrittenTest::expectedAfter(const QString &operation)
{
    if (!perform(operation, startAfresh()).has_value())
        qFatal("the operation fails without any fault");
    return file();
}

void HalfWrittenTest::isNoFileAfterAFailedCall_data()
{
    addOperations();
}

void HalfWrittenTest::isNoFileAfterAFailedCall()
{
    QFETCH(QString, operation);
    const QByteArray wanted = expectedAfter(operation);
    int failures = 0;
    for (int call = 1;; ++call) {
        const QString path = startAfresh();
        const Interruption fault(call, call, [call] { return call % 2 ? EIO : ENOSPC; });
        const Done done = perform(operation, path);
        if (fault.calls() < call)
            break;
        QCOMPARE(file(), done.has_value() ? wanted : m_old);
        QVERIFY(done.has_value() || !done.error().message.isEmpty());
        // Bytes that never reached the device must not count as written.
        QVERIFY(!done.has_value() || !fault.hitTemporary(FileOperation::Flush));
        QVERIFY(!done.has_value() || !fault.hitTemporary(FileOperation::Write));
        // The complete temporary of a failed rename stays; a partial one never does.
        const QStringList left = m_folder.names();
        const bool keepsTemporary = fault.hitTemporary(FileOperation::Rename);
        QCOMPARE(left.contains(u".a.mp3.twtmp"_s), keepsTemporary);
        QCOMPARE(left.size(), keepsTemporary ? 2 : 1);
        failures += !done.has_value();
    }
    QVERIFY(failures >= 6);
}

void HalfWrittenTest::isNoFileAfterTheDiskWentAway_data()
{
    addOperations();
}

void HalfWrittenTest::isNoFileAfterTheDiskWentAway()
{
    QFETCH(QString, operation);
    const QByteArray wanted = expectedAfter(operation);
    for (int call = 1;; ++call) {
        const QString path = startAfresh();
        int calls = 0;
        {
            const Interruption fault(call, INT_MAX, [] { return ENODEV; });
            const Done done = perform(operation, path);
            QCOMPARE(file(), done.has_value() ? wanted : m_old);
            calls = fault.calls();
        }
        QVERIFY(perform(operation, path).has_value());
        QCOMPARE(file(), wanted);
        QCOMPARE(m_folder.names(), QStringList{u"a.mp3"_s});
        if (calls < call)
            break;
    }
}

void HalfWrittenTest::isNoFileAfterAKilledProcess_data()
{
    addOperations();
}

void HalfWrittenTest::isNoFileAfterAKilledProcess()
{
    QFETCH(QString, operation);
    const QByteArray wanted = expectedAfter(operation);
    int oldFiles = 0;
    int newFiles = 0;
    for (int call = 1;; ++call) {
        const QString path = startAfresh();
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(),
                    {childOption, operation, path, QString::number(call)});
        QVERIFY(child.waitForFinished());
        const QByteArray after = file();
        if (child.exitStatus() == QProcess::NormalExit) {
            QCOMPARE(child.exitCode(), 0);
            QCOMPARE(after, wanted);
            break;
        }
        QVERIFY(after == m_old || after == wanted);
        // Once new, always new.
        QVERIFY(after == wanted || newFiles == 0);
        ++(after == m_old ? oldFiles : newFiles);
        // Whatever the dead process left, the next attempt succeeds and clears it away.
        QVERIFY(perform(operation, path).has_value());
        QCOMPARE(m_folder.names(), QStringList{u"a.mp3"_s});
    }
    QVERIFY(oldFiles >= 6);
    QVERIFY(newFiles >= 1);
}

void HalfWrittenTest::isNoFileOnAFullDisk()
{
    const TinyDisk disk(m_folder.makeFolder(u"disk"_s));
    if (!disk.isMounted())
        QSKIP("this user may not mount a file system");
    const QByteArray content =
        TagBuilder().object("Serato Markers2").audio(QByteArray(40'000, 'a')).file();
    const QString path = m_folder.write(u"disk/a.mp3"_s, content);
    for (const QString &operation : {u"restore"_s, u"gain"_s, u"strip"_s}) {
        const Done done = perform(operation, path);
        QVERIFY(!done.has_value());
        QCOMPARE(done.error().message,
                 u"The file “a.mp3” couldn't be written: No space left on device."_s);
        QCOMPARE(m_folder.read(u"disk/a.mp3"_s), content);
        QCOMPARE(m_folder.names(u"disk"_s), QStringList{u"a.mp3"_s});
    }
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == childOption)
        return performUntilKilled(arguments.value(2), arguments.value(3),
                                  arguments.value(4).toInt());
    HalfWrittenTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "half_written_test.moc"
