#include "safety/store_file.h"

#include "foundation/json_record.h"
#include "support/test_files.h"

#include <QTemporaryDir>
#include <QTest>

using namespace tarnwick;
using namespace tarnwick::testing;
using namespace Qt::StringLiterals;

namespace {

struct Pair
{
    qint64 a = 0;
    QString b;

    static bool read(JsonReader &json, Pair &pair, bool *hasWrittenForm)
    {
        const JsonField fields[] = {{"a", &pair.a}, {"b", &pair.b}};
        return readRecord(json, fields, hasWrittenForm);
    }
    void write(JsonWriter &json) const
    {
        json.beginObject();
        json.member(u"a", a);
        json.member(u"b", b);
        json.endObject();
    }
    bool operator==(const Pair &) const = default;
};

const QByteArray twoWritten = "[\n"
                              "  {\n"
                              "    \"a\": 1,\n"
                              "    \"b\": \"x\"\n"
                              "  },\n"
                              "  {\n"
                              "    \"a\": 2,\n"
                              "    \"b\": \"y\"\n"
                              "  }\n"
                              "]\n";

} // namespace

class StoreFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesWhatItReadByteForByte();
    void bringsForeignTextIntoItsOwnForm();
    void keepsTheTextOfWhatItWroteItself();
    void countsAFileWithOneBadRecordAsBad_data();
    void countsAFileWithOneBadRecordAsBad();
    void loadsNothingFromWhatCannotBeRead_data();
    void loadsNothingFromWhatCannotBeRead();
};

void StoreFileTest::writesWhatItReadByteForByte()
{
    const auto list = StoreFile::decoded<Pair>(twoWritten);
    QVERIFY(list.has_value());
    QCOMPARE(list->records, (QList<Pair>{{1, u"x"_s}, {2, u"y"_s}}));
    QCOMPARE(StoreFile::listOf(list->texts), twoWritten);
    QCOMPARE(StoreFile::listOf({}), QByteArray("[]\n"));
    QCOMPARE(StoreFile::decoded<Pair>("[]\n")->records, QList<Pair>());
}

void StoreFileTest::bringsForeignTextIntoItsOwnForm()
{
    const auto list = StoreFile::decoded<Pair>(
        " [ {\"b\":\"\\u0078\",\"a\":1e0,\"c\":null} , {\"a\":2 ,\"b\":\"y\"} ] ");
    QVERIFY(list.has_value());
    QCOMPARE(StoreFile::listOf(list->texts), twoWritten);
}

void StoreFileTest::keepsTheTextOfWhatItWroteItself()
{
    const auto list = StoreFile::decoded<Pair>(twoWritten);
    const char *first = list->texts.first().constData();
    QVERIFY(first > list->file.constData() && first < list->file.constData() + list->file.size());
}

void StoreFileTest::countsAFileWithOneBadRecordAsBad_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray good = R"({"a":1,"b":"x"})";
    QTest::newRow("a wrong type") << QByteArray("[" + good + R"(,{"a":"1","b":"x"}])");
    QTest::newRow("a missing key") << QByteArray("[" + good + R"(,{"a":1}])");
    QTest::newRow("a null") << QByteArray("[" + good + R"(,{"a":1,"b":null}])");
    QTest::newRow("no record") << QByteArray("[" + good + ",null]");
    QTest::newRow("no list") << good;
    QTest::newRow("two lists") << QByteArray("[][]");
    QTest::newRow("cut") << QByteArray("[" + good + ",");
    QTest::newRow("empty") << QByteArray();
}

void StoreFileTest::countsAFileWithOneBadRecordAsBad()
{
    QFETCH(QByteArray, file);
    QVERIFY(!StoreFile::decoded<Pair>(file).has_value());
}

void StoreFileTest::loadsNothingFromWhatCannotBeRead_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("nothing there") << u"none"_s;
    QTest::newRow("a folder") << u"folder"_s;
    QTest::newRow("a pipe") << u"pipe"_s;
    QTest::newRow("not JSON") << u"text"_s;
}

void StoreFileTest::loadsNothingFromWhatCannotBeRead()
{
    QFETCH(QString, name);
    QTemporaryDir folder;
    QDir(folder.path()).mkdir(u"folder"_s);
    ::mkfifo(QFile::encodeName(folder.filePath(u"pipe"_s)).constData(), 0600);
    put(folder.filePath(u"text"_s), "text");
    const auto list = StoreFile::load<Pair>(folder.filePath(name));
    QVERIFY(list.records.isEmpty() && list.texts.isEmpty());
}

QTEST_GUILESS_MAIN(StoreFileTest)
#include "store_file_test.moc"
