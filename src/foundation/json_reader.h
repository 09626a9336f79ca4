#pragma once

#include "foundation/json_number.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>
#include <utility>

namespace tarnwick {

/// Reads JSON strictly, one value after the other, with no document in memory. For the stores:
/// whole numbers of 64 bits stay exact, nothing is coerced, and a value that is not what was asked
/// for, or no JSON at all, makes the reader fail for good.
///
///     JsonReader json(bytes);
///     const bool good = json.array([&] { return readItem(json); }) && json.end();
///
/// The bytes must outlive the reader and every view that it gives.
class JsonReader
{
public:
    explicit JsonReader(QByteArrayView bytes);

    /// Reads an object. `member` is called with each key, in UTF-8 and valid for that call, and
    /// must read or skip the value. Of equal keys all are reported, in order.
    template <typename Member>
    bool object(Member member)
    {
        if (!open('{'))
            return false;
        while (nextElement('}')) {
            QByteArray key;
            if (!readKey(key) || !member(QByteArrayView(key)))
                return fail();
        }
        return !m_failed;
    }

    /// Reads an array. `element` is called at each element and must read or skip it.
    template <typename Element>
    bool array(Element element)
    {
        if (!open('['))
            return false;
        while (nextElement(']')) {
            if (!element())
                return fail();
        }
        return !m_failed;
    }

    bool text(QString &out);
    /// The text of valid UTF-8, as keys are given.
    static QString toText(QByteArrayView utf8);
    /// The same in UTF-8. Shares the reader's bytes where the text holds no escape.
    bool utf8(QByteArray &out);
    /// A number whose value is whole and fits; "5.0" is 5.
    bool whole(quint64 &out);
    bool whole(qint64 &out);
    bool number(double &out);
    bool boolean(bool &out);
    /// Any value at all.
    bool skip();

    /// True, and past it, if the next value is null.
    bool takeNull();
    /// True if nothing but white space is left and nothing failed.
    bool end();

    /// Where the next value starts, in bytes: passes the white space ahead of it.
    qsizetype valueStart();
    /// Where the reader stands: behind a value, before anything that follows it.
    qsizetype position() const { return m_at; }
    QByteArrayView bytesBetween(qsizetype start, qsizetype end) const;

    /// Starts to compare with what JsonWriter's pretty style would have written.
    void watchForm() { m_isWrittenForm = true; }
    /// True if all that was read since then has exactly that form: its indent, its escapes, its
    /// numbers. The order of the keys is not looked at.
    bool hasWrittenForm() const { return m_isWrittenForm && !m_failed; }

private:
    bool fail();
    bool open(char bracket);
    bool nextElement(char closing);
    bool readKey(QByteArray &key);
    bool takeColon();
    qsizetype skipSpace();
    void noteLineBreak(qsizetype start, qsizetype depth);
    bool takeWord(QByteArrayView word);
    /// Moves past a number, and notes whether others of its kind are written so too.
    std::optional<JsonNumber::Token> takeNumber();
    template <typename Whole>
    bool wholeNumber(Whole &out);

    QByteArrayView m_bytes;
    qsizetype m_at = 0;
    int m_depth = 0;
    bool m_failed = false;
    bool m_isFirst = false; ///< no element of the innermost bracket has been read yet
    bool m_isWrittenForm = false;
};

} // namespace tarnwick
