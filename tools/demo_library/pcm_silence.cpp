#include "pcm_silence.h"

#include "byte_writing.h"

#include <bit>

namespace tarnwick::demo {

namespace {

constexpr int channels = 2;
constexpr int bytesInSample = 2;

enum class Order { Little, Big };

void appendChunk(QByteArray &out, const char *id, const QByteArray &content, Order order)
{
    const auto size = static_cast<quint32>(content.size());
    out.append(id, 4);
    order == Order::Little ? appendLittleEndian(out, size) : appendBigEndian(out, size);
    out.append(content);
    if (content.size() % 2 != 0) {
        out.append('\0');
    }
}

QByteArray silence(int samples)
{
    return QByteArray(qsizetype(samples) * channels * bytesInSample, '\0');
}

/// A whole number as an 80-bit extended float, which is how AIFF states its sample rate.
QByteArray extendedFloat(quint32 value)
{
    const int highestBit = static_cast<int>(std::bit_width(value)) - 1;
    QByteArray out;
    appendBigEndian(out, static_cast<quint16>(16383 + highestBit));
    appendBigEndian(out, static_cast<quint64>(value) << (63 - highestBit));
    return out;
}

} // namespace

QByteArray wavSilence(int samples, int sampleRate, const QByteArray &tag)
{
    QByteArray format;
    appendLittleEndian<quint16>(format, 1); // PCM
    appendLittleEndian<quint16>(format, channels);
    appendLittleEndian(format, static_cast<quint32>(sampleRate));
    appendLittleEndian(format, static_cast<quint32>(sampleRate * channels * bytesInSample));
    appendLittleEndian<quint16>(format, channels * bytesInSample);
    appendLittleEndian<quint16>(format, bytesInSample * 8);

    QByteArray content("WAVE");
    appendChunk(content, "fmt ", format, Order::Little);
    appendChunk(content, "data", silence(samples), Order::Little);
    if (!tag.isEmpty()) {
        appendChunk(content, "id3 ", tag, Order::Little);
    }
    QByteArray file;
    appendChunk(file, "RIFF", content, Order::Little);
    return file;
}

QByteArray aiffSilence(int samples, int sampleRate, const QByteArray &tag)
{
    QByteArray common;
    appendBigEndian<quint16>(common, channels);
    appendBigEndian(common, static_cast<quint32>(samples));
    appendBigEndian<quint16>(common, bytesInSample * 8);
    common.append(extendedFloat(static_cast<quint32>(sampleRate)));

    QByteArray sound(8, '\0'); // offset and block size
    sound.append(silence(samples));

    QByteArray content("AIFF");
    appendChunk(content, "COMM", common, Order::Big);
    appendChunk(content, "SSND", sound, Order::Big);
    if (!tag.isEmpty()) {
        appendChunk(content, "ID3 ", tag, Order::Big);
    }
    QByteArray file;
    appendChunk(file, "FORM", content, Order::Big);
    return file;
}

} // namespace tarnwick::demo
