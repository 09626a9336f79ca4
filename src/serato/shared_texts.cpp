#include "serato/shared_texts.h"

#include "foundation/utf16.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cstring>

namespace tarnwick {

namespace {

constexpr qsizetype wordSize = sizeof(quint64);

quint64 wordAt(const char *bytes)
{
    return qFromUnaligned<quint64>(bytes);
}

/// The bytes of an even number below eight, of at least two.
quint64 shortWord(const char *bytes, qsizetype size)
{
    if (size == 2)
        return qFromUnaligned<quint16>(bytes);
    return quint64(qFromUnaligned<quint32>(bytes)) << 32 |
           qFromUnaligned<quint32>(bytes + size - 4);
}

/// Of a payload without its odd last byte.
quint64 hashOf(QByteArrayView payload)
{
    constexpr quint64 multiplier = 0x9E3779B97F4A7C15;
    const char *bytes = payload.data();
    quint64 hash = quint64(payload.size());
    const auto mix = [&hash](quint64 word) {
        hash = (hash ^ word) * multiplier;
        hash ^= hash >> 32;
    };
    if (payload.size() < wordSize) {
        mix(shortWord(bytes, payload.size()));
    } else {
        const qsizetype last = payload.size() - wordSize; // overlaps the word ahead of it
        for (qsizetype i = 0; i < last; i += wordSize)
            mix(wordAt(bytes + i));
        mix(wordAt(bytes + last));
    }
    return hash * multiplier;
}

/// As std::memcmp, without its call.
bool areSame(const char *bytes, const char *others, qsizetype size)
{
    if (size < wordSize)
        return shortWord(bytes, size) == shortWord(others, size);
    const qsizetype last = size - wordSize;
    for (qsizetype i = 0; i < last; i += wordSize) {
        if (wordAt(bytes + i) != wordAt(others + i))
            return false;
    }
    return wordAt(bytes + last) == wordAt(others + last);
}

/// True if the payload decodes to the text without a repair.
bool spells(QByteArrayView payload, QStringView text)
{
    int difference = 0;
    for (qsizetype i = 0; i < text.size(); ++i)
        difference |= qFromBigEndian<char16_t>(payload.data() + 2 * i) ^ text.utf16()[i];
    return difference == 0;
}

/// Each place takes a line of the cache, all of them at most a megabyte.
int bitsFor(quint64 records)
{
    return std::clamp(int(std::bit_width(records)), 4, 14);
}

} // namespace

SharedTexts::SharedTexts(quint64 records)
    : m_places(size_t(1) << bitsFor(records))
    , m_shift(64 - bitsFor(records))
{}

void SharedTexts::setShared(QString &text, QByteArrayView payload)
{
    if (m_waitingCount == m_waiting.size())
        settle();
    payload = payload.first(payload.size() & ~qsizetype(1));
    Place *place = nullptr;
    if (!payload.isEmpty()) {
        place = &m_places[hashOf(payload) >> m_shift];
        __builtin_prefetch(place, 1);
    }
    m_waiting[m_waitingCount++] = {&text, place, payload};
}

void SharedTexts::settle()
{
    for (size_t i = 0; i < m_waitingCount; ++i) {
        const auto [text, place, payload] = m_waiting[i];
        if (place && !holds(*place, payload))
            remember(*place, payload);
        *text = place ? place->text.take() : QString();
    }
    m_waitingCount = 0;
}

bool SharedTexts::holds(const Place &place, QByteArrayView payload)
{
    if (2 * place.text.size() != payload.size())
        return false;
    constexpr qsizetype startSize = sizeof(place.start);
    if (!areSame(payload.data(), place.start, std::min(payload.size(), startSize)))
        return false;
    return payload.size() <= startSize ||
           spells(payload.sliced(startSize), place.text.view().sliced(startSize / 2));
}

void SharedTexts::remember(Place &place, QByteArrayView payload)
{
    place.text.fill(own(payload));
    const qsizetype startSize = std::min(payload.size(), qsizetype(sizeof(place.start)));
    std::memcpy(place.start, payload.data(), size_t(startSize));
}

QString SharedTexts::own(QByteArrayView payload)
{
    return m_packed.text(payload.size() / 2,
                         [payload](char16_t *out) { decodeUtf16BigEndian(payload, out); });
}

} // namespace tarnwick
