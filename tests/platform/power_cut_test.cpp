// What a power cut could undo: bytes reach the device before the rename that makes them count, and
// the folder's new entry before anything else goes.

#include "platform/files_write.h"
#include "support/other_file_system.h"
#include "support/recorded_calls.h"
#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class PowerCutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void findsAReplacedFileOnTheDevice();
    void findsAReplacedFolderOnTheDevice();
    void findsAMovedFileOnOneDeviceAtLeast();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void PowerCutTest::findsAReplacedFileOnTheDevice()
{
    put(path(u"a.mp3"_s), "old");
    const auto calls =
        lastingCallsOf([&] { QVERIFY(platform::replaceFile(path(u"a.mp3"_s), "new")); });
    QCOMPARE(calls, (QStringList{u"flush .a.mp3.twtmp"_s, u"rename .a.mp3.twtmp"_s, u"flush ."_s}));
}

void PowerCutTest::findsAReplacedFolderOnTheDevice()
{
    put(path(u"snapshot/Subcrates/a.crate"_s), "new");
    put(path(u"library/Subcrates/b.crate"_s), "old");
    const auto calls = lastingCallsOf([&] {
        QVERIFY(platform::replaceItem(path(u"snapshot/Subcrates"_s), path(u"library/Subcrates"_s)));
    });
    QCOMPARE(calls, (QStringList{u"flush a.crate"_s, u"flush ."_s, u"rename .Subcrates.twtmp"_s,
                                 u"flush ."_s, u"remove b.crate"_s, u"remove .Subcrates.twtmp"_s}));
}

void PowerCutTest::findsAMovedFileOnOneDeviceAtLeast()
{
    if (!linkToOtherFileSystem(path(u"to"_s)))
        QSKIP("no second file system");
    put(path(u"a.mp3"_s), "audio");
    const auto calls = lastingCallsOf(
        [&] { QVERIFY(platform::moveWithoutReplacing(path(u"a.mp3"_s), path(u"to/a.mp3"_s))); });
    QCOMPARE(calls, (QStringList{u"rename a.mp3"_s, u"flush .a.mp3.twtmp"_s,
                                 u"rename .a.mp3.twtmp"_s, u"flush ."_s, u"remove a.mp3"_s}));
}

QTEST_APPLESS_MAIN(PowerCutTest)
#include "power_cut_test.moc"
