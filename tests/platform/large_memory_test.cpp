#include "platform/large_memory.h"

#include <QFile>
#include <QTest>

#include <cstdint>

#include <sys/mman.h>

using namespace tarnwick::platform;

namespace {

/// Fresh memory of its own, given back at the end.
class Memory
{
public:
    explicit Memory(size_t bytes)
        : m_bytes(bytes)
        , m_start(static_cast<char *>(
              ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)))
    {}
    ~Memory() { ::munmap(m_start, m_bytes); }
    Memory(const Memory &) = delete;
    Memory &operator=(const Memory &) = delete;

    char *start() const { return m_start; }
    size_t bytes() const { return m_bytes; }

    /// Whether the kernel has been asked for large pages halfway through the memory.
    bool isMarked() const
    {
        QFile list(QStringLiteral("/proc/self/smaps"));
        if (!list.open(QIODevice::ReadOnly))
            return false;
        const auto wanted = reinterpret_cast<std::uintptr_t>(m_start) + m_bytes / 2;
        bool here = false;
        for (const QByteArray &line : list.readAll().split('\n')) {
            const QByteArrayList range = line.left(line.indexOf(' ')).split('-');
            if (range.size() == 2)
                here = range[0].toULongLong(nullptr, 16) <= wanted &&
                       wanted < range[1].toULongLong(nullptr, 16);
            else if (here && line.startsWith("VmFlags:"))
                return line.split(' ').contains("hg");
        }
        return false;
    }

private:
    size_t m_bytes;
    char *m_start;
};

} // namespace

class LargeMemoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asksForLargePagesWithinTheMemory()
    {
        const Memory memory(16 << 20);
        expectToFill(memory.start() + 1, memory.bytes() - 2);
        QCOMPARE(memory.isMarked(),
                 QFile::exists(QStringLiteral("/sys/kernel/mm/transparent_hugepage")));
        memory.start()[0] = 'a';
        memory.start()[memory.bytes() - 1] = 'z';
    }

    void leavesSmallMemoryAlone()
    {
        const Memory memory(1 << 20);
        expectToFill(memory.start(), memory.bytes());
        QVERIFY(!memory.isMarked());
    }
};

QTEST_APPLESS_MAIN(LargeMemoryTest)
#include "large_memory_test.moc"
