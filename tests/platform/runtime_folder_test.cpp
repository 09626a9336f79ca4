#include "platform/runtime_folder.h"

#include "support/scoped_environment.h"

#include <QFileInfo>
#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class RuntimeFolderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavesTheSessionsFolderAlone()
    {
        const testing::ScopedVariable set("XDG_RUNTIME_DIR", "/somewhere/else");
        platform::preferRuntimeFolder();
        QCOMPARE(qgetenv("XDG_RUNTIME_DIR"), "/somewhere/else"_ba);
    }

    void namesAFolderThatNoOneElseMayEnter()
    {
        const testing::ScopedVariable unset("XDG_RUNTIME_DIR");
        platform::preferRuntimeFolder();
        const QFileInfo folder(qEnvironmentVariable("XDG_RUNTIME_DIR"));
        QVERIFY(folder.isDir());
        QCOMPARE(int(folder.permissions() & (QFile::ReadGroup | QFile::ReadOther)), 0);
    }
};

QTEST_APPLESS_MAIN(RuntimeFolderTest)
#include "runtime_folder_test.moc"
