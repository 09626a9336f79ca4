#include "export/export_util.h"

#include <QTest>

#include <limits>

using namespace tarnwick;
using namespace Qt::StringLiterals;

class ExportUtilTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void escapesForXml_data();
    void escapesForXml();
    void writesFileUrls_data();
    void writesFileUrls();
    void takesPercentEncodingBack_data();
    void takesPercentEncodingBack();
    void readsBackEveryPathThatItEncodes();
    void readsALength_data();
    void readsALength();
};

void ExportUtilTest::escapesForXml_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("escaped");
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("nothing to escape") << u"Äther — part 2"_s << u"Äther — part 2"_s;
    QTest::newRow("all five") << u"<a & \"b\" 'c'>"_s
                              << u"&lt;a &amp; &quot;b&quot; &apos;c&apos;&gt;"_s;
    QTest::newRow("an entity already") << u"R&amp;B"_s << u"R&amp;amp;B"_s;
    QTest::newRow("five in a row") << u"&<>\"'"_s << u"&amp;&lt;&gt;&quot;&apos;"_s;
    QTest::newRow("line breaks and tabs") << u"a\nb\r\tc"_s << u"a\nb\r\tc"_s;
    QTest::newRow("control characters") << u"a\u0001\u007F\u0085"_s << u"a\u0001\u007F\u0085"_s;
    QTest::newRow("two, three and four bytes") << u"é漢🎧"_s << u"é漢🎧"_s;
    QTest::newRow("first and last of each size")
        << u"\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF"_s
        << u"\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF"_s;
    QTest::newRow("NUL") << QString(QChar::Null) << QString(QChar::Null);
    QTest::newRow("byte-order mark") << u"\uFEFFa"_s << u"\uFEFFa"_s;
    QTest::newRow("high surrogate alone") << QString(QChar(0xD83C)) + u"a"_s << u"\uFFFDa"_s;
    QTest::newRow("high surrogate at the end") << u"a"_s + QChar(0xD83C) << u"a\uFFFD"_s;
    QTest::newRow("low surrogate alone") << QString(QChar(0xDFA7)) + u"a"_s << u"\uFFFDa"_s;
}

void ExportUtilTest::escapesForXml()
{
    QFETCH(QString, text);
    QTEST(ExportUtil::xml(text), "escaped");
}

void ExportUtilTest::writesFileUrls_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("url");
    const QString kept = u"/ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~"_s;
    QTest::newRow("all that is kept") << kept << u"file://localhost"_s + kept;
    QTest::newRow("blank") << u"/Music/a b.mp3"_s << u"file://localhost/Music/a%20b.mp3"_s;
    QTest::newRow("plus") << u"/a+b"_s << u"file://localhost/a%2Bb"_s;
    QTest::newRow("percent") << u"/100%41"_s << u"file://localhost/100%2541"_s;
    QTest::newRow("what XML escapes") << u"/&<>\"'"_s << u"file://localhost/%26%3C%3E%22%27"_s;
    QTest::newRow("what other URLs keep") << u"/!$()*,:;=@?#[]"_s
                                          << u"file://localhost/%21%24%28%29%2A%2C%3A%3B%3D%40%3F"
                                             "%23%5B%5D"_s;
    QTest::newRow("around letters and digits")
        << u"/`{|}^\\"_s << u"file://localhost/%60%7B%7C%7D%5E%5C"_s;
    QTest::newRow("line break and NUL")
        << u"/a\nb"_s + QChar::Null << u"file://localhost/a%0Ab%00"_s;
    QTest::newRow("beyond ASCII") << u"/é漢🎧"_s
                                  << u"file://localhost/%C3%A9%E6%BC%A2%F0%9F%8E%A7"_s;
    QTest::newRow("decomposed") << u"/e\u0301"_s << u"file://localhost/e%CC%81"_s;
    QTest::newRow("no slash") << u"a"_s << u"file://localhosta"_s;
    QTest::newRow("empty") << u""_s << u"file://localhost"_s;
}

void ExportUtilTest::writesFileUrls()
{
    QFETCH(QString, path);
    QTEST(ExportUtil::fileUrl(path), "url");
}

void ExportUtilTest::takesPercentEncodingBack_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("path");
    QTest::newRow("nothing encoded") << QByteArray("/a-b") << u"/a-b"_s;
    QTest::newRow("blank and plus") << QByteArray("/a%20b+c%2B") << u"/a b+c+"_s;
    QTest::newRow("encoded once only") << QByteArray("/%2541") << u"/%41"_s;
    QTest::newRow("lower-case digits") << QByteArray("/%c3%a9") << u"/é"_s;
    QTest::newRow("raw UTF-8") << QByteArray("/é%20") << u"/é "_s;
    QTest::newRow("byte-order mark") << QByteArray("%EF%BB%BF/a") << u"\uFEFF/a"_s;
    QTest::newRow("byte-order mark and a bad escape")
        << QByteArray("\xEF\xBB\xBF/a%") << u"\uFEFF/a%"_s;
    QTest::newRow("NUL") << QByteArray("/%00") << u"/"_s + QChar::Null;
    QTest::newRow("byte-order mark") << QByteArray("%EF%BB%BF/a") << u"\uFEFF/a"_s;
    QTest::newRow("no digits") << QByteArray("/%20%zz") << u"/%20%zz"_s;
    QTest::newRow("one digit") << QByteArray("/%20%4/") << u"/%20%4/"_s;
    QTest::newRow("cut behind the sign") << QByteArray("/%20%") << u"/%20%"_s;
    QTest::newRow("cut behind one digit") << QByteArray("/%20%4") << u"/%20%4"_s;
    QTest::newRow("no UTF-8") << QByteArray("/%20%FF") << u"/%20%FF"_s;
    QTest::newRow("cut UTF-8") << QByteArray("/%20%C3") << u"/%20%C3"_s;
    QTest::newRow("surrogate") << QByteArray("/%20%ED%A0%80") << u"/%20%ED%A0%80"_s;
    QTest::newRow("empty") << QByteArray() << u""_s;
}

void ExportUtilTest::takesPercentEncodingBack()
{
    QFETCH(QByteArray, text);
    QTEST(ExportUtil::withoutPercentEncoding(text), "path");
}

void ExportUtilTest::readsBackEveryPathThatItEncodes()
{
    QString path = u"/"_s;
    for (char16_t unit = 0; unit < 0x300; ++unit)
        path.append(QChar(unit));
    path.append(u"漢\uFFFF🎧"_s);
    const QString url = ExportUtil::fileUrl(path);
    QCOMPARE(ExportUtil::withoutPercentEncoding(url.toLatin1().sliced(16)), path);
}

void ExportUtilTest::readsALength_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("seconds");
    const auto row = [](const char *text, qint64 seconds) {
        QTest::newRow(*text == '\0' ? "empty" : text) << QString::fromUtf8(text) << seconds;
    };
    row("3:05", 185);
    row("04:23", 263);
    row("1:00:00", 3600);
    row("1:02:03", 3723);
    row("", 0);
    row("4", 0);
    row(":", 0);
    row("1:2:3:4", 0);
    row("04:23.17", 0);
    row("1:02:03.5", 62);
    row("::3::05:", 185);
    row("3:x:05", 185);
    row("3: 05", 0);
    row("+3:05", 185);
    row("-3:05", -175);
    row("3:٠٥", 0);
    row("0:9223372036854775807", std::numeric_limits<qint64>::max());
    row("1:2:9223372036854775808", 62);
    row("99:99", 6039);
}

void ExportUtilTest::readsALength()
{
    QFETCH(QString, text);
    QTEST(ExportUtil::seconds(text), "seconds");
}

QTEST_APPLESS_MAIN(ExportUtilTest)
#include "export_util_test.moc"
