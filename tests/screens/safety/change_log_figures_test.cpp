#include "screens/safety/change_log_figures.h"

#include "foundation/dates.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

const QDateTime now(QDate(2026, 11, 20), QTime(12, 0), Qt::UTC);

ChangeEntry entryOf(std::optional<qint64> secondsLeft, bool reversed = false)
{
    ChangeEntry entry;
    entry.date = now.addDays(-2);
    if (secondsLeft)
        entry.reversibleUntil = now.addSecs(*secondsLeft);
    entry.reversed = reversed;
    return entry;
}

} // namespace

class ChangeLogFiguresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEntryTellsForHowLongItCanBeUndone_data()
    {
        constexpr qint64 day = 86'400;
        const QString date = dateForPeople(now.addDays(-2));
        QTest::addColumn<ChangeEntry>("entry");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("reversible");
        const auto row = [&](const char *name, const ChangeEntry &entry, const QString &text,
                             bool reversible) {
            QTest::newRow(name) << entry << text << reversible;
        };
        row("undone", entryOf(30 * day, true), u"Reversed"_s, false);
        row("undone, and never reversible", entryOf({}, true), u"Reversed"_s, false);
        row("a snapshot", entryOf({}), date + u" · safety record"_s, false);
        row("fresh", entryOf(30 * day), date + u" · reversible for 30 more days"_s, true);
        row("one day", entryOf(day + 1), date + u" · reversible for 1 more day"_s, true);
        row("an hour", entryOf(3600), date + u" · reversible for 0 more days"_s, true);
        row("past", entryOf(-day), date + u" · reversible for 0 more days"_s, false);
    }
    void anEntryTellsForHowLongItCanBeUndone()
    {
        QFETCH(const ChangeEntry, entry);
        QFETCH(const bool, reversible);
        QTEST(ChangeLogFigures::reversibility(entry, now), "text");
        QCOMPARE(ChangeLogFigures::anyReversible({entryOf({}), entry}, now), reversible);
    }
};

QTEST_APPLESS_MAIN(ChangeLogFiguresTest)
#include "change_log_figures_test.moc"
