#include "serato_frames.h"

#include "byte_writing.h"

#include <array>
#include <bit>
#include <cstdlib>

namespace tarnwick::demo {

namespace {

constexpr int markers2BlockSize = 470;
constexpr int base64LineLength = 72;
constexpr int olderSlots = 14;
constexpr int olderCueSlots = 5;
constexpr int overviewColumns = 240;
constexpr int overviewRows = 16;
constexpr quint32 noPosition = 0x7F7F7F7F;

constexpr std::array<quint32, 5> cueColours = {0xCC0000, 0xCC8800, 0x0000CC, 0xCCCC00, 0x00CC00};
constexpr std::array<const char *, 5> cueNames = {"", "Drop", "Break", "Vocal", "Mix out"};

void appendEntry(QByteArray &out, const char *name, const QByteArray &data)
{
    out.append(name).append('\0');
    appendBigEndian(out, static_cast<quint32>(data.size()));
    out.append(data);
}

QByteArray cue(int index, Random &random)
{
    QByteArray data(1, '\0');
    data.append(static_cast<char>(index));
    appendBigEndian(data, static_cast<quint32>(index * 41'000 + random.below(40'000)));
    data.append('\0');
    appendColour(data, cueColours[static_cast<size_t>(index)]);
    data.append(2, '\0');
    data.append(cueNames[static_cast<size_t>(random.below(5))]).append('\0');
    return data;
}

QByteArray inLines(const QByteArray &text)
{
    QByteArray out;
    for (qsizetype i = 0; i < text.size(); i += base64LineLength) {
        out.append(i == 0 ? "" : "\n").append(text.mid(i, base64LineLength));
    }
    return out;
}

float tempo(const QString &bpm)
{
    const float value = bpm.toFloat();
    return value > 0 ? value : 120.0F;
}

void appendFloat(QByteArray &out, float value)
{
    appendBigEndian(out, std::bit_cast<quint32>(value));
}

} // namespace

QByteArray markers2Data(Random &random)
{
    QByteArray entries("\x01\x01");
    appendEntry(entries, "COLOR", QByteArray::fromHex("00999999"));
    const int cues = random.below(6);
    for (int i = 0; i < cues; ++i) {
        appendEntry(entries, "CUE", cue(i, random));
    }
    appendEntry(entries, "BPMLOCK", QByteArray(1, random.permille(200) ? '\1' : '\0'));
    entries.append('\0');
    return QByteArray("\x01\x01") + inLines(entries.toBase64()).leftJustified(markers2BlockSize, 0);
}

QByteArray olderMarkersData(Random &random)
{
    QByteArray out("\x02\x05");
    appendBigEndian<quint32>(out, olderSlots);
    for (int slot = 0; slot < olderSlots; ++slot) {
        const bool isCue = slot < olderCueSlots;
        const bool isSet = isCue && random.permille(500);
        out.append(isSet ? '\0' : '\x7F');
        appendBigEndian(out, isSet ? static_cast<quint32>(random.below(200'000)) : noPosition);
        out.append('\x7F');
        appendBigEndian(out, noPosition);
        out.append(QByteArray::fromHex("007F7F7F7F7F"));
        appendBigEndian(out, isSet ? cueColours[static_cast<size_t>(slot)] : 0U);
        out.append(isCue ? '\1' : '\3').append('\0');
    }
    appendBigEndian<quint32>(out, 0x00999999);
    return out;
}

QByteArray beatGridData(const QString &bpm, Random &random)
{
    QByteArray out(1, '\x01');
    out.append('\0');
    const int markers = random.permille(100) ? 2 : 1;
    appendBigEndian(out, static_cast<quint32>(markers));
    const float first = static_cast<float>(random.below(500)) / 1000.0F;
    if (markers == 2) {
        constexpr quint32 beats = 64;
        appendFloat(out, first);
        appendBigEndian(out, beats);
    }
    appendFloat(out, markers == 2 ? first + 64 * 60 / tempo(bpm) : first);
    appendFloat(out, tempo(bpm));
    out.append(static_cast<char>(random.below(256)));
    return out;
}

QByteArray decimalText(int thousandths)
{
    const QByteArray decimals = QByteArray::number(std::abs(thousandths) % 1000);
    return (thousandths < 0 ? "-" : "") + QByteArray::number(std::abs(thousandths) / 1000) + '.' +
           decimals.rightJustified(3, '0');
}

QByteArray autotagsData(const QString &bpm, int autogain)
{
    QByteArray out("\x01\x01");
    out.append(QByteArray::number(static_cast<double>(tempo(bpm)), 'f', 2)).append('\0');
    out.append(decimalText(autogain)).append('\0');
    out.append("0.000").append('\0');
    return out;
}

QByteArray overviewData(Random &random)
{
    QByteArray out("\x01\x05");
    for (int column = 0; column < overviewColumns; ++column) {
        const int level = random.between(2, overviewRows);
        for (int row = 0; row < overviewRows; ++row) {
            out.append(static_cast<char>(row < level ? 0x40 + 8 * (level - row) : 1));
        }
    }
    return out;
}

} // namespace tarnwick::demo
