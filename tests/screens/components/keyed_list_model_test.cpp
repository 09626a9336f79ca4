#include "screens/components/keyed_list_model.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

/// Rows that show their own key.
class Rows : public KeyedListModel
{
public:
    QVariant data(const QModelIndex &index, int role) const override
    {
        const int place = placeOf(index);
        return role == Qt::DisplayRole && place >= 0 ? QVariant(keys().at(place)) : QVariant();
    }
    void set(const QString &letters) { setKeys(letters.split(QString(), Qt::SkipEmptyParts)); }
    void set(const QStringList &keys) { setKeys(keys); }
    void setDistinct(const QStringList &keys) { setKeys(distinct(keys)); }
    QStringList known() const { return keys(); }
    QString shown() const
    {
        QString all;
        for (int row = 0; row < rowCount(); ++row)
            all += index(row).data().toString();
        return all;
    }
};

} // namespace

class KeyedListModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keysThatOccurTwiceCanBeToldApart()
    {
        Rows rows;
        rows.setDistinct({u"a"_s, u"b"_s, u"a"_s, u"a"_s, u""_s});
        const QStringList known = rows.known();
        QCOMPARE(known.size(), 5);
        QCOMPARE(known.first(2), QStringList({u"a"_s, u"b"_s}));
        QCOMPARE(known.last(), QString());
        QCOMPARE(QSet<QString>(known.begin(), known.end()).size(), 5);
    }

    void tellsWhatHasComeAndGone_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("told");
        const auto row = [](const char *name, const QString &before, const QString &after,
                            const QString &told) {
            QTest::newRow(name) << before << after << told;
        };
        row("nothing", u"abc"_s, u"abc"_s, u""_s);
        row("filled", u""_s, u"abc"_s, u"+0-2"_s);
        row("emptied", u"abc"_s, u""_s, u"-0-2"_s);
        row("first gone", u"abc"_s, u"bc"_s, u"-0-0"_s);
        row("last gone", u"abc"_s, u"ab"_s, u"-2-2"_s);
        row("two runs gone", u"abcdef"_s, u"adf"_s, u"-4-4 -1-2"_s);
        row("come between", u"ac"_s, u"abbc"_s, u"+1-2"_s);
        row("gone and come", u"abc"_s, u"axc"_s, u"-1-1 +1-1"_s);
        row("exchanged", u"ab"_s, u"ba"_s, u"-1-1 +0-0"_s);
        row("twice the same", u"aab"_s, u"ab"_s, u"-1-1"_s);
        row("all others", u"ab"_s, u"xyz"_s, u"-0-1 +0-2"_s);
    }
    void tellsWhatHasComeAndGone()
    {
        QFETCH(const QString, before);
        QFETCH(const QString, after);
        Rows rows;
        const QAbstractItemModelTester tester(&rows);
        rows.set(before);
        QStringList told;
        connect(&rows, &QAbstractItemModel::rowsRemoved, this,
                [&](const QModelIndex &, int first, int last) {
                    told += u"-%1-%2"_s.arg(first).arg(last);
                });
        connect(&rows, &QAbstractItemModel::rowsInserted, this,
                [&](const QModelIndex &, int first, int last) {
                    told += u"+%1-%2"_s.arg(first).arg(last);
                });
        rows.set(after);
        QTEST(told.join(u' '), "told");
        QCOMPARE(rows.shown(), after);
    }

    void rowsThatStayMayReadOtherwise()
    {
        Rows rows;
        rows.set(u"abc"_s);
        const QSignalSpy changed(&rows, &QAbstractItemModel::dataChanged);
        rows.set(u"ac"_s);
        QCOMPARE(changed.size(), 1);
    }

    void startsAfreshWhereAlmostAllHasChanged()
    {
        Rows rows;
        const QAbstractItemModelTester tester(&rows);
        QStringList many;
        for (int i = 0; i < 2000; ++i)
            many += QString::number(i);
        rows.set(many);
        QStringList odd;
        for (int i = 1; i < 2000; i += 2)
            odd += QString::number(i);
        const QSignalSpy reset(&rows, &QAbstractItemModel::modelReset);
        rows.set(odd);
        QCOMPARE(reset.size(), 1);
        QCOMPARE(rows.rowCount(), 1000);
        QCOMPARE(rows.index(999).data(), u"1999"_s);
    }

    void comesOutRightWhateverHasChanged()
    {
        QRandomGenerator random(7);
        Rows rows;
        const QAbstractItemModelTester tester(&rows);
        for (int round = 0; round < 300; ++round) {
            QString letters;
            for (int i = random.bounded(12); i > 0; --i)
                letters += QChar(u'a' + random.bounded(8));
            rows.set(letters);
            QCOMPARE(rows.shown(), letters);
        }
    }
};

QTEST_GUILESS_MAIN(KeyedListModelTest)
#include "keyed_list_model_test.moc"
