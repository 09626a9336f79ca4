#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

/// Texts as JSON writes them: between quotation marks, in UTF-8, with escapes.
namespace tarnwick::JsonText {

struct Token
{
    QByteArrayView encoded; ///< what stands between the quotation marks
    bool hasEscapes = false;
};

/// The text whose opening mark stands at `start`, within the bytes, which must outlive it. Nothing
/// for a text that doesn't end, that is no UTF-8 or holds a control; whether its escapes are any,
/// `decode` tells.
std::optional<Token> at(QByteArrayView bytes, qsizetype start);

struct Decoded
{
    QByteArray bytes;
    bool isWrittenForm = true; ///< JsonWriter escapes the same characters in the same way
};

/// UTF-8 without its escapes. Nothing for an escape that JSON doesn't know, and for half of a
/// surrogate pair, which is no text.
std::optional<Decoded> decode(QByteArrayView encoded);

} // namespace tarnwick::JsonText
