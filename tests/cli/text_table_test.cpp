#include "cli/text_table.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class TextTableTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void alignsColumnsTwoBlanksApart()
    {
        cli::TextTable table;
        table.addRow({u"a"_s, u"long one"_s, u"end"_s});
        table.addRow({u"bcd"_s, u"x"_s, u"longer end"_s});
        QCOMPARE(table.text(), u"a    long one  end\nbcd  x         longer end\n"_s);
    }

    void setsFiguresToTheRight()
    {
        cli::TextTable table;
        table.alignRight(1);
        table.addRow({u"a"_s, u"5"_s, u"x"_s});
        table.addRow({u"b"_s, u"100"_s, u"y"_s});
        QCOMPARE(table.text(), u"a    5  x\nb  100  y\n"_s);
    }

    void leavesNoBlanksAtTheEndOfALine()
    {
        cli::TextTable table;
        table.addRow({u"a"_s, u"x"_s});
        table.addRow({u"b"_s, u"long"_s});
        QCOMPARE(table.text(), u"a  x\nb  long\n"_s);
    }

    void givesColoursNoPlace()
    {
        cli::TextTable table;
        table.addRow({u"\033[32mok\033[0m"_s, u"x"_s});
        table.addRow({u"bad"_s, u"y"_s});
        QCOMPARE(table.text(), u"\033[32mok\033[0m   x\nbad  y\n"_s);
    }

    void alignsTheRowsThatAreShown()
    {
        cli::TextTable table;
        table.addRow({u"a"_s, u"x"_s});
        table.addRow({u"long"_s, u"y"_s});
        QCOMPARE(table.text(1), u"a  x\n"_s);
        QCOMPARE(table.rowCount(), 2);
    }

    void isEmptyWithoutRows() { QCOMPARE(cli::TextTable().text(), QString()); }
};

QTEST_GUILESS_MAIN(TextTableTest)
#include "text_table_test.moc"
