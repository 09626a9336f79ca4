#include "platform/open_file.h"

#include "platform/fault_gate.h"
#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

#include <fcntl.h>

using namespace tarnwick::platform;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

class OpenFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensWithoutWaitingForAPipe();
    void writesPiecesOfEverySize();
    void copiesOnFromWhereTheSourceStands();
    void copiesWhatTheSystemMakesUp();
    void passesTheGateWithEveryCall();

private:
    QByteArray path(const char *name) const
    {
        return QFile::encodeName(m_folder.filePath(QString::fromLatin1(name)));
    }

    QTemporaryDir m_folder;
};

void OpenFileTest::opensWithoutWaitingForAPipe()
{
    ::mkfifo(path("pipe").constData(), 0600);
    QCOMPARE(OpenFile::open(path("pipe"), O_WRONLY).error(), ENXIO);
    QCOMPARE(OpenFile::open(path("none"), O_RDONLY).error(), ENOENT);
    QCOMPARE(OpenFile::open(path("none") + '\0', O_WRONLY | O_CREAT).error(), ENOENT);
}

void OpenFileTest::writesPiecesOfEverySize()
{
    QByteArrayList pieces;
    for (int i = 0; i < 3000; ++i)
        pieces << QByteArray(i % 7 == 0 ? 0 : i, char('a' + i % 26));
    const std::vector<QByteArrayView> views(pieces.begin(), pieces.end());
    auto file = OpenFile::open(path("pieces"), O_WRONLY | O_CREAT, 0600);
    QCOMPARE(file->write(views), 0);
    QCOMPARE(file->close(), 0);
    QCOMPARE(contentOf(QFile::decodeName(path("pieces"))), pieces.join());
}

void OpenFileTest::copiesOnFromWhereTheSourceStands()
{
    put(m_folder.filePath(u"source"_s), "skipped, copied");
    const auto source = OpenFile::open(path("source"), O_RDONLY);
    QCOMPARE(::lseek(source->descriptor(), 9, SEEK_SET), off_t(9));
    auto copy = OpenFile::open(path("copy"), O_WRONLY | O_CREAT, 0600);
    QCOMPARE(copy->copyRestOf(*source), 0);
    QCOMPARE(contentOf(m_folder.filePath(u"copy"_s)), QByteArray("copied"));
}

/// Such files claim to be empty, and the kernel's own copying believes it.
void OpenFileTest::copiesWhatTheSystemMakesUp()
{
    const auto source = OpenFile::open("/proc/version", O_RDONLY);
    if (!source)
        QSKIP("no such file system");
    auto copy = OpenFile::open(path("version"), O_WRONLY | O_CREAT, 0600);
    QCOMPARE(copy->copyRestOf(*source), 0);
    QCOMPARE(contentOf(m_folder.filePath(u"version"_s)), contentOf(u"/proc/version"_s));
}

void OpenFileTest::passesTheGateWithEveryCall()
{
    put(m_folder.filePath(u"gated"_s), "x");
    const auto source = OpenFile::open(path("gated"), O_RDONLY);
    auto file = OpenFile::open(path("gated"), O_WRONLY);
    const QByteArrayView piece("y");
    struct stat status;
    const ScopedFaults faults([](FileOperation, const QString &) { return EIO; });
    QCOMPARE(OpenFile::open(path("gated"), O_RDONLY).error(), EIO);
    QCOMPARE(file->write(std::span(&piece, 1)), EIO);
    QCOMPARE(file->overwrite({}), EIO);
    QCOMPARE(file->flush(), EIO);
    QCOMPARE(file->status(status), EIO);
    QCOMPARE(file->copyRestOf(*source), EIO);
    QCOMPARE(contentOf(m_folder.filePath(u"gated"_s)), QByteArray("x"));
}

QTEST_GUILESS_MAIN(OpenFileTest)
#include "open_file_test.moc"
