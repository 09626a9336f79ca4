#include "analysis/title_cut.h"

#include "foundation/text.h"
#include "support/random_library.h"
#include "support/slow_title_cut.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

QString randomTitle(RandomLibrary &random)
{
    static const QStringList pieces = {u"Song"_s,       u"-"_s,           u"("_s,
                                       u"["_s,          u")"_s,           u"]"_s,
                                       u"radio"_s,      u"Extended"_s,    u"acapella"_s,
                                       u"Acappella"_s,  u"acappppella"_s, u"acaella"_s,
                                       u"acap"_s,       u"intro"_s,       u"CLEAN"_s,
                                       u"dirty"_s,      u"Remix"_s,       u"edit"_s,
                                       u"original"_s,   u"mix"_s,         u"original mix"_s,
                                       u"club"_s,       u"dub"_s,         u"rema"_s,
                                       u"remaster"_s,   u"live"_s,        u"vip"_s,
                                       u"İ"_s,          u"é"_s,           u"\u212A"_s,
                                       u"\U0001F3B5"_s, u"–"_s,           u"instrumental"_s};
    QString title;
    for (int left = random.below(7); left >= 0; --left) {
        title += random.oneOf(pieces);
        if (random.oneIn(2))
            title += random.oneOf(RandomLibrary::spaces());
    }
    return title;
}

} // namespace

class TitleCutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKeywordHasItsLabel()
    {
        for (const auto &[keyword, label] : cutKeywords()) {
            QCOMPARE(baseAndCut(u"Song "_s + keyword).cut, label);
            QCOMPARE(baseAndCut(u"Song"_s + keyword.toUpper() + u"x"_s).cut, label);
        }
    }

    void theLaterOfTwoKeywordsWins()
    {
        const auto &keywords = cutKeywords();
        for (qsizetype earlier = 0; earlier < keywords.size(); ++earlier) {
            for (qsizetype later = earlier + 1; later < keywords.size(); ++later) {
                const QString first = keywords[earlier].first;
                const QString second = keywords[later].first;
                QCOMPARE(cutOf(QString(first + u' ' + second)), keywords[later].second);
                QCOMPARE(cutOf(QString(second + u' ' + first)), keywords[later].second);
            }
        }
    }

    void titles_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("cut");
        const auto row = [](const char *name, QStringView title, QStringView base,
                            QStringView cut) {
            QTest::newRow(name) << title.toString() << base.toString() << cut.toString();
        };
        row("plain", u"Song", u"song", u"Original");
        row("empty", u"", u"", u"Original");
        row("radio edit is an edit", u"Song (Radio Edit)", u"song", u"Edit");
        row("radio alone", u"Song (Radio)", u"song", u"Radio edit");
        row("behind a dash", u"Song - Extended Mix", u"song", u"Extended");
        row("nothing but brackets", u"(Intro)", u"", u"Intro");
        row("acapella with two p", u"Song (Acappella)", u"song", u"Acapella");
        row("acapella behind a dash, one p", u"Song - Acapella", u"song", u"Acapella");
        row("acapella behind a dash, three p", u"Song - Acapppella", u"song", u"Original");
        row("acapella without p stays", u"Song - Acaella", u"song - acaella", u"Original");
        row("club mix", u"Song - Club Mix", u"song", u"Club mix");
        row("original mix", u"Song - Original Mix", u"song", u"Original");
        row("original mix needs its one blank", u"Song - Original  Mix", u"song - original  mix",
            u"Original");
        row("remix and live", u"Song (Live Remix)", u"song", u"Live");
        row("a keyword inside a word", u"Alive", u"alive", u"Live");
        row("edited, clubbing", u"Edited - Clubbing", u"edited", u"Club mix");
        row("dash without blanks", u"Song-Remix", u"song", u"Remix");
        row("dash ahead of another word", u"Song - Part Two", u"song - part two", u"Original");
        row("second dash", u"A-B - Dub", u"a-b", u"Dub");
        row("two dashes ahead of one keyword", u"Song - - Dub", u"song -", u"Dub");
        row("first of two dashed keywords", u"Song - Live - Dub", u"song", u"Live");
        row("en dash is none", u"Song – Dub", u"song – dub", u"Dub");
        row("square bracket", u"Song [Clean]", u"song", u"Clean");
        row("first bracket of several", u"Song (A) [B] (C)", u"song", u"Original");
        row("closing bracket alone stays", u"Song) x", u"song) x", u"Original");
        row("bracket ahead of the dash", u"Song (x - dub)", u"song", u"Dub");
        row("dash ahead of the bracket", u"Song - Dub (x)", u"song", u"Dub");
        row("what stands behind the line stays", u"Song (A)\nMore", u"song\nmore", u"Original");
        row("the dash behind the line", u"Song (A)\n- Dub", u"song", u"Dub");
        row("the keyword in the next line", u"Song -\nDub x\ny", u"song\ny", u"Dub");
        row("line separator ends the line", u"Song [A]\u2028B", u"song\u2028b", u"Original");
        row("white space of all kinds goes along", u"Song\n\t\u3000(A)", u"song", u"Original");
        row("blanks at the ends go", u"\t Song\u00A0", u"song", u"Original");
        row("a byte-order mark is a character", u"\uFEFFSong (A)", u"\uFEFFsong", u"Original");
        row("the wrong way round too", u"\uFFFESong (A)", u"\uFFFEsong", u"Original");
        row("line breaks at the ends stay", u"\nSong\n", u"\nsong\n", u"Original");
    }

    void titles()
    {
        QFETCH(QString, title);
        const BaseAndCut found = baseAndCut(title);
        QTEST(found.base, "base");
        QTEST(found.cut, "cut");
        QCOMPARE(found, slowBaseAndCut(title));
    }

    void agreesWithTheRegularExpressions()
    {
        RandomLibrary random(7);
        int changed = 0;
        for (int i = 0; i < 20'000; ++i) {
            const QString title = randomTitle(random);
            const BaseAndCut found = baseAndCut(title);
            const BaseAndCut expected = slowBaseAndCut(title);
            QCOMPARE(found.base, expected.base);
            QCOMPARE(found.cut, expected.cut);
            changed += found.base != lowerCased(title);
        }
        QVERIFY(changed > 5'000);
    }

    void reducesOnlyFromItsStart()
    {
        std::u16string text = u"artist (x) |song - dub";
        reduceToBase(text, 12);
        QCOMPARE(QStringView(text), u"artist (x) |song");
        text = u"a \u00A0(dub)";
        reduceToBase(text, 2);
        QCOMPARE(QStringView(text), u"a ");
    }

    void capitals_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << u""_s << u""_s;
        QTest::newRow("words") << u"one more time"_s << u"One More Time"_s;
        QTest::newRow("apostrophe, digit and hyphen")
            << u"don't stop 3rd re-edit"_s << u"Don't Stop 3rd Re-edit"_s;
        QTest::newRow("all white space parts") << u"a\tb\nc\u00A0d"_s << u"A\tB\nC\u00A0D"_s;
        QTest::newRow("a sign first") << u"'one \"two"_s << u"'one \"two"_s;
        QTest::newRow("accent") << u"élan ночь"_s << u"Élan Ночь"_s;
        QTest::newRow("sharp s") << u"ß"_s << u"SS"_s;
        QTest::newRow("beyond the basic plane")
            << u"\U00010428\U00010428"_s << u"\U00010400\U00010428"_s;
        QTest::newRow("capitals stay") << u"aBC"_s << u"ABC"_s;
    }

    void capitals()
    {
        QFETCH(QString, text);
        QTEST(capitalised(text), "expected");
    }
};

QTEST_APPLESS_MAIN(TitleCutTest)
#include "title_cut_test.moc"
