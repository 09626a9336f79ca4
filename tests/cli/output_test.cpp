#include "cli/output.h"

#include <QTest>

#include <cstdlib>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

/// What `write(out)` has put out.
template <typename Write>
QByteArray written(cli::Output::Colours colours, Write write)
{
    char *text = nullptr;
    size_t size = 0;
    std::FILE *stream = ::open_memstream(&text, &size);
    {
        cli::Output out(stream, colours);
        write(out);
    }
    std::fclose(stream);
    const QByteArray bytes(text, qsizetype(size));
    std::free(text);
    return bytes;
}

cli::TextTable tableOf(int rows)
{
    cli::TextTable table;
    for (int i = 0; i < rows; ++i)
        table.addRow({QString::number(i)});
    return table;
}

} // namespace

class OutputTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void coloursOnlyWhereThereAreColours()
    {
        const auto write = [](cli::Output &out) {
            out.line(out.toned(cli::Tone::Good, u"fine"_s) + out.toned(cli::Tone::Poor, {}));
        };
        QCOMPARE(written(cli::Output::Colours::No, write), QByteArray("fine\n"));
        QCOMPARE(written(cli::Output::Colours::Yes, write), QByteArray("\033[32mfine\033[0m\n"));
    }

    void cutsAListAtItsLimitAndCountsTheRest_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("below") << 1 << QByteArray("0\n");
        QTest::newRow("at") << 2 << QByteArray("0\n1\n");
        QTest::newRow("above") << 4 << QByteArray("0\n1\n… and 2 more (--all lists them)\n");
    }
    void cutsAListAtItsLimitAndCountsTheRest()
    {
        QFETCH(const int, rows);
        QTEST(written(cli::Output::Colours::No,
                      [&](cli::Output &out) {
                          out.setRowLimit(2);
                          out.list(tableOf(rows));
                      }),
              "expected");
    }

    void listsEverythingWithoutALimit()
    {
        QCOMPARE(written(cli::Output::Colours::No, [](cli::Output &out) { out.list(tableOf(200)); })
                     .count('\n'),
                 200);
    }
};

QTEST_GUILESS_MAIN(OutputTest)
#include "output_test.moc"
