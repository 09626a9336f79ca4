#include "foundation/json_record.h"

#include <QTest>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

struct Record
{
    QString name = u"unset"_s;
    QDateTime date;
    quint64 size = 0;
    qint64 count = 0;
    bool flag = false;
    QByteArray raw;
    std::optional<QString> note;
    std::optional<QDateTime> until;

    bool operator==(const Record &) const = default;
};

bool read(JsonReader &json, Record &record, bool *hasWrittenForm = nullptr)
{
    const JsonField fields[] = {
        {"count", &record.count}, {"date", &record.date},   {"flag", &record.flag},
        {"name", &record.name},   {"note", &record.note},   {"raw", &record.raw},
        {"size", &record.size},   {"until", &record.until},
    };
    return readRecord(json, fields, hasWrittenForm);
}

/// A good record's members; a row replaces one or takes it away.
QMap<QByteArray, QByteArray> goodMembers()
{
    return {{"count", "-3"},   {"date", "\"2026-11-20T14:05:00Z\""},
            {"flag", "true"},  {"name", "\"n\""},
            {"note", "\"x\""}, {"raw", "\"QQ==\""},
            {"size", "7"},     {"until", "\"2026-12-20T14:05:00Z\""}};
}

QByteArray objectOf(const QMap<QByteArray, QByteArray> &members)
{
    QByteArrayList lines;
    for (const auto &[key, value] : members.toStdMap())
        lines << "  \"" + key + "\": " + value;
    return "{\n" + lines.join(",\n") + "\n}";
}

} // namespace

class JsonRecordTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryFieldInAnyOrder();
    void leavesOptionalFieldsOut();
    void takesTheLastOfEqualKeys();
    void refusesARecordOfAnotherShape_data();
    void refusesARecordOfAnotherShape();
    void knowsTheFormOfTheWriter_data();
    void knowsTheFormOfTheWriter();
};

void JsonRecordTest::readsEveryFieldInAnyOrder()
{
    const QByteArray forwards = objectOf(goodMembers());
    const QByteArray backwards =
        R"({"until":"2026-12-20T14:05:00Z","size":7,"raw":"QQ==","note":"x","name":"n",)"
        R"("flag":true,"unknown":{"a":[1]},"date":"2026-11-20T14:05:00Z","count":-3})";
    const Record wanted = {u"n"_s, QDateTime({2026, 11, 20}, {14, 5}, Qt::UTC), 7, -3, true, "QQ==",
                           u"x"_s, QDateTime({2026, 12, 20}, {14, 5}, Qt::UTC)};
    for (const QByteArray &bytes : {forwards, backwards}) {
        JsonReader json(bytes);
        Record record;
        QVERIFY(read(json, record) && json.end());
        QCOMPARE(record, wanted);
    }
}

void JsonRecordTest::leavesOptionalFieldsOut()
{
    auto members = goodMembers();
    members.remove("note");
    members["until"] = "null";
    const QByteArray bytes = objectOf(members);
    JsonReader json(bytes);
    Record record;
    QVERIFY(read(json, record));
    QVERIFY(!record.note && !record.until);
}

void JsonRecordTest::takesTheLastOfEqualKeys()
{
    const QByteArray good = objectOf(goodMembers());
    const QByteArray bytes = good.chopped(2) + R"(, "name": "second", "note": null})";
    JsonReader json(bytes);
    Record record;
    QVERIFY(read(json, record) && json.end());
    QCOMPARE(record.name, u"second"_s);
    QVERIFY(!record.note);
}

void JsonRecordTest::refusesARecordOfAnotherShape_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("value"); // null: the key is missing
    for (const char *key : {"count", "date", "flag", "name", "raw", "size"}) {
        QTest::addRow("%s missing", key) << QByteArray(key) << QByteArray();
        QTest::addRow("%s null", key) << QByteArray(key) << QByteArray("null");
    }
    const auto row = [](const char *name, const char *key, const char *value) {
        QTest::newRow(name) << QByteArray(key) << QByteArray(value);
    };
    row("a number for a text", "name", "5");
    row("a text for a number", "size", "\"7\"");
    row("a fraction for a whole number", "count", "1.5");
    row("a sign where none can be", "size", "-7");
    row("too large a number", "size", "18446744073709551616");
    row("a text for a Boolean", "flag", "\"false\"");
    row("a number for a Boolean", "flag", "0");
    row("a list for a text", "raw", "[\"QQ==\"]");
    row("a number for an optional text", "note", "5");
    row("a date with a fraction", "date", "\"2026-11-20T14:05:00.5Z\"");
    row("a date with an offset", "date", "\"2026-11-20T14:05:00+01:00\"");
    row("a date as a number", "date", "1763647500");
    row("a bad optional date", "until", "\"tomorrow\"");
    row("an unknown key with no value", "unknown", "");
}

void JsonRecordTest::refusesARecordOfAnotherShape()
{
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, value);
    auto members = goodMembers();
    value.isNull() ? void(members.remove(key)) : void(members.insert(key, value));
    const QByteArray bytes = objectOf(members);
    JsonReader json(bytes);
    Record record;
    QVERIFY(!read(json, record));
}

void JsonRecordTest::knowsTheFormOfTheWriter_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isWritten");
    const QByteArray good = objectOf(goodMembers());
    auto without = goodMembers();
    without.remove("note");
    auto withNull = goodMembers();
    withNull["note"] = "null";
    auto withUnknown = goodMembers();
    withUnknown["unknown"] = "1";
    QByteArray swapped =
        QByteArray(good).replace("count", "?").replace("size", "count").replace("?", "size");
    QTest::newRow("written") << good << true;
    QTest::newRow("white space around") << "  " + good + "  " << true;
    QTest::newRow("without an optional field") << objectOf(without) << true;
    QTest::newRow("null for an optional field") << objectOf(withNull) << false;
    QTest::newRow("an unknown key") << objectOf(withUnknown) << false;
    QTest::newRow("keys in another order") << swapped.replace("-3", "3") << false;
    QTest::newRow("another indent") << QByteArray(good).replace("\n  ", "\n ") << false;
    QTest::newRow("a key with escapes") << QByteArray(good).replace("name", "n\\u0061me") << false;
    QTest::newRow("a key twice") << good.chopped(2) + ",\n  \"until\": \"2026-12-20T14:05:00Z\"\n}"
                                 << false;
}

void JsonRecordTest::knowsTheFormOfTheWriter()
{
    QFETCH(QByteArray, bytes);
    JsonReader json(bytes);
    Record record;
    bool hasWrittenForm = false;
    QVERIFY(read(json, record, &hasWrittenForm) && json.end());
    QTEST(hasWrittenForm, "isWritten");
}

QTEST_GUILESS_MAIN(JsonRecordTest)
#include "json_record_test.moc"
