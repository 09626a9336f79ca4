// What holds of every database, tried on made-up ones: records and fields of any tag and any
// content, some of them twice, beside a plain list of the same that is changed by hand.

#include "serato/serato_document.h"
#include "support/serato_builder.h"
#include "support/test_folder.h"

#include <QTest>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::testing;

namespace {

struct PlainField
{
    QByteArray tag;
    QByteArray payload;
};

struct PlainRecord
{
    QByteArray tag;
    QList<PlainField> fields; ///< of a track
    QByteArray opaque;        ///< of any other record

    QByteArray bytes() const
    {
        QByteArray body = opaque;
        for (const PlainField &field : fields)
            body += record(field.tag, field.payload);
        return record(tag, body);
    }
    bool hasPath(const QString &path) const
    {
        const qsizetype at = indexOf("pfil");
        return tag == "otrk" && (at < 0 ? QByteArray() : fields.at(at).payload) == utf16(path);
    }
    void set(const QByteArray &fieldTag, const QByteArray &payload)
    {
        const qsizetype at = indexOf(fieldTag);
        if (at < 0)
            fields.append({fieldTag, payload});
        else
            fields[at].payload = payload;
    }

private:
    qsizetype indexOf(const QByteArray &fieldTag) const
    {
        const auto found = std::find_if(fields.begin(), fields.end(), [&](const PlainField &field) {
            return field.tag == fieldTag;
        });
        return found == fields.end() ? -1 : found - fields.begin();
    }
};

/// Draws databases. The same seed draws the same.
class Dice
{
public:
    explicit Dice(unsigned seed)
        : m_random(seed)
    {}

    int below(int bound) { return std::uniform_int_distribution(0, bound - 1)(m_random); }

    QByteArray noise(int most)
    {
        QByteArray bytes(below(most), '\0');
        for (char &byte : bytes)
            byte = char(below(256));
        return bytes;
    }
    /// Of few letters, so that tags meet; or any four bytes that a tag may have.
    QByteArray tag()
    {
        static const QByteArrayList known = {"pfil", "tgen", "tsng", "bmis", "uadd", "zzzz"};
        if (below(4) != 0)
            return known.at(below(int(known.size())));
        QByteArray any(4, '\0');
        for (char &byte : any)
            byte = char(below(128));
        return any;
    }
    /// Of few, so that tracks meet too.
    QString path() { return u"Users/\u00E4 %1.mp3"_s.arg(below(12)); }

    PlainRecord record()
    {
        PlainRecord drawn{below(4) == 0 ? tag() : QByteArray("otrk"), {}, {}};
        if (drawn.tag != "otrk") {
            drawn.opaque = noise(60);
            return drawn;
        }
        for (int i = below(8); i > 0; --i) {
            const QByteArray fieldTag = tag();
            drawn.fields.append({fieldTag, fieldTag == "pfil" ? utf16(path()) : noise(30)});
        }
        return drawn;
    }
    QList<PlainRecord> records()
    {
        QList<PlainRecord> drawn;
        for (int i = below(25); i > 0; --i)
            drawn.append(record());
        return drawn;
    }

private:
    std::mt19937 m_random;
};

QByteArray imageOf(const QList<PlainRecord> &records)
{
    QByteArray image;
    for (const PlainRecord &each : records)
        image += each.bytes();
    return image;
}

PlainRecord *firstOf(QList<PlainRecord> &records, const QString &path)
{
    for (PlainRecord &each : records) {
        if (each.hasPath(path))
            return &each;
    }
    return nullptr;
}

/// Does the same to the document and to the list; false where the document answers otherwise.
bool editBoth(SeratoDocument &document, QList<PlainRecord> &records, Dice &dice)
{
    const QString path = dice.path();
    const QString asked = dice.below(2) == 0 ? u'/' + path : path;
    const QString text = u"text %1 \U0001F600"_s.arg(dice.below(1000));
    PlainRecord *track = firstOf(records, path);
    switch (dice.below(5)) {
    case 0: {
        const QByteArray tag = dice.tag();
        if (track)
            track->set(tag, utf16(text));
        return document.setText(asked, *Tag::at(tag.constData()), text) == (track != nullptr);
    }
    case 1:
    case 2: {
        const bool isMissing = dice.below(2) == 0;
        const QString newPath = dice.path();
        if (track) {
            track->set("pfil", utf16(newPath));
            track->set("bmis", QByteArray(1, char(isMissing)));
        }
        return (isMissing ? document.revertRelink(asked, newPath)
                          : document.relink(asked, newPath)) == (track != nullptr);
    }
    case 3: {
        const bool isThere = track != nullptr;
        if (isThere)
            records.removeAt(track - records.data());
        return document.removeTrack(asked) == isThere;
    }
    default: {
        PlainRecord added{"otrk", {{"zzzz", dice.noise(20)}, {"pfil", utf16(path)}}, {}};
        const QByteArray bytes = added.bytes();
        if (!track)
            records.append(added);
        return document.insert(DocumentRecord::fromBytes(bytes)) == (track == nullptr);
    }
    }
}

} // namespace

class DocumentPropertiesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unchangedDocumentsAreTheirFilesByteForByte()
    {
        const TestFolder folder;
        for (unsigned seed = 0; seed < 200; ++seed) {
            const QByteArray image = imageOf(Dice(seed).records());
            const auto document = SeratoDocument::read(folder.write(u"database V2"_s, image));
            QVERIFY(document);
            QCOMPARE(document->serialize(), image);
        }
    }

    void recordsTakenApartAreTheirBytes()
    {
        for (unsigned seed = 0; seed < 100; ++seed) {
            const QList<PlainRecord> records = Dice(seed).records();
            const SeratoDocument document = SeratoDocument::fromBytes(imageOf(records));
            QCOMPARE(document.recordCount(), records.size());
            for (qsizetype i = 0; i < records.size(); ++i)
                QCOMPARE(document.record(i).bytes(), records.at(i).bytes());
        }
    }

    void randomEditsTouchNothingElse()
    {
        int found = 0;
        for (unsigned seed = 0; seed < 200; ++seed) {
            Dice dice(seed);
            QList<PlainRecord> records = dice.records();
            SeratoDocument document = SeratoDocument::fromBytes(imageOf(records));
            for (int edits = dice.below(20); edits > 0; --edits) {
                const QByteArray before = imageOf(records);
                QVERIFY2(editBoth(document, records, dice), QByteArray::number(seed));
                const QByteArray after = imageOf(records);
                QCOMPARE(document.serialize(), after);
                found += after == before ? 0 : 1;
            }
        }
        QVERIFY2(found > 500, QByteArray::number(found));
    }
};

QTEST_GUILESS_MAIN(DocumentPropertiesTest)
#include "document_properties_test.moc"
