#include "foundation/byte_format.h"

#include <QTest>

#include <limits>

using namespace tarnwick;

namespace {

/// Set ahead of main(), since the library asks for the user's locale only once.
[[maybe_unused]] const bool inTheCLocale = qputenv("LC_ALL", "C");

} // namespace

class ByteFormatTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsByteCounts_data();
    void tellsByteCounts();
};

void ByteFormatTest::tellsByteCounts_data()
{
    QTest::addColumn<quint64>("bytes");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, quint64 bytes, const char *text) {
        QTest::newRow(name) << bytes << QString::fromLatin1(text);
    };
    row("nothing", 0, "0 MB");
    row("one byte", 1, "0 KB");
    row("below half a KB", 499, "0 KB");
    row("half a KB is rounded up", 500, "1 KB");
    row("KB without decimals", 812'345, "812 KB");
    row("the last that is not 1 MB", 999'999, "1000 KB");
    row("1 MB, its zero dropped", 1'000'000, "1 MB");
    row("one decimal", 5'449'999, "5.4 MB");
    row("one decimal rounded up", 5'450'000, "5.5 MB");
    row("a decimal rounded up to a whole", 5'960'000, "6 MB");
    row("the last that is not 1 GB", 999'999'999, "1000 MB");
    row("1 GB, both zeros dropped", 1'000'000'000, "1 GB");
    row("two decimals", 1'254'000'000, "1.25 GB");
    row("the last zero dropped", 1'204'000'000, "1.2 GB");
    row("a zero ahead of the last decimal stays", 1'046'000'000, "1.05 GB");
    row("no unit beyond GB", 12'345'678'901'234, "12345.68 GB");
    row("the largest", std::numeric_limits<quint64>::max(), "18446744073.71 GB");
}

void ByteFormatTest::tellsByteCounts()
{
    QFETCH(quint64, bytes);
    QFETCH(QString, text);
    QCOMPARE(ByteFmt::string(bytes), text);
}

QTEST_GUILESS_MAIN(ByteFormatTest)
#include "byte_format_test.moc"
