#pragma once

#include <QByteArray>
#include <QString>
#include <QtEndian>

#include <optional>

namespace tarnwick {

class Tag;
consteval Tag operator""_tag(const char *name, size_t length);

/// The name of a record in Serato's files: four ASCII characters, control characters and NUL
/// included. Compared as one number.
class Tag
{
public:
    static constexpr qsizetype size = 4; ///< bytes

    /// The tag at a place of at least four bytes; nothing if one of them is no ASCII character.
    static std::optional<Tag> at(const char *bytes)
    {
        return fromCode(qFromBigEndian<quint32>(bytes));
    }

    /// The tag of four characters; nothing for a text of another form.
    static std::optional<Tag> fromText(QStringView text)
    {
        quint32 code = 0;
        for (const QChar character : text) {
            if (character.unicode() >= 0x80)
                return std::nullopt;
            code = code << 8 | character.unicode();
        }
        return text.size() == size ? std::optional(Tag(code)) : std::nullopt;
    }

    /// The four bytes as a big-endian number.
    constexpr quint32 code() const { return m_code; }

    QString text() const
    {
        char bytes[size];
        qToBigEndian(m_code, bytes);
        return QString::fromLatin1(bytes, size);
    }

    constexpr bool operator==(const Tag &) const = default;

private:
    friend consteval Tag operator""_tag(const char *name, size_t length);

    constexpr explicit Tag(quint32 code)
        : m_code(code)
    {}

    static std::optional<Tag> fromCode(quint32 code)
    {
        constexpr quint32 highBits = 0x80808080;
        return (code & highBits) == 0 ? std::optional(Tag(code)) : std::nullopt;
    }

    quint32 m_code;
};

/// "otrk"_tag; any other length than four does not compile.
consteval Tag operator""_tag(const char *name, size_t length)
{
    if (length != size_t(Tag::size))
        throw "a tag has four characters";
    quint32 code = 0;
    for (qsizetype i = 0; i < Tag::size; ++i)
        code = code << 8 | uchar(name[i]);
    return Tag(code);
}

} // namespace tarnwick
