#include "foundation/utf8.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tarnwick;

class Utf8Test : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsEveryCharacter_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << u""_s;
        QTest::newRow("several lengths") << u"aé–\U0001F3B5"_s;
        QTest::newRow("a mark at the start") << u"\uFEFFa"_s;
        QTest::newRow("two of them") << u"\uFEFF\uFEFF"_s;
        QTest::newRow("a mark elsewhere") << u"a\uFEFF"_s;
        QTest::newRow("a mark the wrong way round") << u"\uFFFEa"_s;
        QTest::newRow("zero") << QString(u'\0') + u'a';
    }

    void keepsEveryCharacter()
    {
        QFETCH(QString, text);
        QCOMPARE(decodeUtf8(text.toUtf8()), text);
    }

    void replacesWhatIsNone()
    {
        QCOMPARE(decodeUtf8("a\xFFz"), u"a\uFFFDz"_s);
        QCOMPARE(decodeUtf8("\xEF\xBB\xBF\xED\xA0\x80").front(), QChar(QChar::ByteOrderMark));
    }
};

QTEST_APPLESS_MAIN(Utf8Test)
#include "utf8_test.moc"
