#include "analysis/title_cut.h"

#include "analysis/folded_text.h"
#include "foundation/text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

struct CutKeyword
{
    QStringView keyword;
    QString label;
};

/// The order matters: the last keyword found decides.
std::span<const CutKeyword> cutKeywords()
{
    static const CutKeyword table[] = {
        {u"radio", u"Radio edit"_s},
        {u"extended", u"Extended"_s},
        {u"instrumental", u"Instrumental"_s},
        {u"acapella", u"Acapella"_s},
        {u"acappella", u"Acapella"_s},
        {u"intro", u"Intro"_s},
        {u"clean", u"Clean"_s},
        {u"dirty", u"Dirty"_s},
        {u"remix", u"Remix"_s},
        {u"edit", u"Edit"_s},
        {u"original mix", u"Original"_s},
        {u"club", u"Club mix"_s},
        {u"dub", u"Dub"_s},
        {u"remaster", u"Remaster"_s},
        {u"live", u"Live"_s},
        {u"vip", u"VIP"_s},
    };
    return table;
}

/// For each ASCII character the rows of the table that begin with it, as bits.
using RowsByStart = std::array<quint32, 0x80>;

const RowsByStart &rowsByStart()
{
    static const RowsByStart rows = [] {
        RowsByStart filled{};
        for (size_t row = 0; row < cutKeywords().size(); ++row)
            filled[cutKeywords()[row].keyword.front().unicode()] |= 1u << row;
        return filled;
    }();
    return rows;
}

quint32 rowsStartingWith(QChar first)
{
    return first.unicode() < 0x80 ? rowsByStart()[first.unicode()] : 0;
}

/// "a cappella" in one word, with any number of "p" but none.
bool startsWithAcapella(QStringView text)
{
    if (!text.startsWith(u"acap"))
        return false;
    text = text.sliced(4);
    while (text.startsWith(u'p'))
        text = text.sliced(1);
    return text.startsWith(u"ella");
}

bool startsWithKeyword(QStringView text)
{
    quint32 rows = text.isEmpty() ? 0 : rowsStartingWith(text.front());
    for (; rows != 0; rows &= rows - 1) {
        if (text.startsWith(cutKeywords()[size_t(std::countr_zero(rows))].keyword))
            return true;
    }
    return startsWithAcapella(text);
}

bool isLineBreak(QChar character)
{
    const char16_t unit = character.unicode();
    return (unit >= 0x0A && unit <= 0x0D) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

size_t pastWhiteSpace(const std::u16string &text, size_t from)
{
    while (from < text.size() && isWhiteSpace(text[from]))
        ++from;
    return from;
}

/// Removes `text` from `from`, and from the white space ahead of it back to `start`, to the end of
/// the line that `last` lies in.
void removeToEndOfLine(std::u16string &text, size_t start, size_t from, size_t last)
{
    while (last < text.size() && !isLineBreak(text[last]))
        ++last;
    while (from > start && isWhiteSpace(text[from - 1]))
        --from;
    text.erase(from, last - from);
}

void removeBracketed(std::u16string &text, size_t start)
{
    const size_t bracket = text.find_first_of(u"([", start);
    if (bracket != std::u16string::npos)
        removeToEndOfLine(text, start, bracket, bracket);
}

/// The keyword may stand in a later line than its dash.
void removeDashedKeyword(std::u16string &text, size_t start)
{
    size_t dash = text.find(u'-', start);
    while (dash != std::u16string::npos) {
        const size_t word = pastWhiteSpace(text, dash + 1);
        if (startsWithKeyword(QStringView(text).sliced(qsizetype(word)))) {
            removeToEndOfLine(text, start, dash, word);
            return;
        }
        dash = text.find(u'-', dash + 1);
    }
}

void trimBlanks(std::u16string &text, size_t start)
{
    while (text.size() > start && isBlank(text.back()))
        text.pop_back();
    const auto lead = std::find_if_not(text.begin() + ptrdiff_t(start), text.end(), isBlank);
    text.erase(text.begin() + ptrdiff_t(start), lead);
}

} // namespace

const QString &cutOf(QStringView loweredTitle)
{
    static const QString original = u"Original"_s;
    constexpr quint32 allRows = ~0u;
    quint32 wanted = allRows; // only rows behind the best so far can still win
    const CutKeyword *best = nullptr;
    for (qsizetype at = 0; at < loweredTitle.size(); ++at) {
        quint32 rows = rowsStartingWith(loweredTitle[at]) & wanted;
        for (; rows != 0; rows &= rows - 1) {
            const int row = std::countr_zero(rows);
            const CutKeyword &candidate = cutKeywords()[size_t(row)];
            if (!loweredTitle.sliced(at).startsWith(candidate.keyword))
                continue;
            best = &candidate;
            wanted = allRows << row << 1;
        }
    }
    return best ? best->label : original;
}

void reduceToBase(std::u16string &text, size_t start)
{
    removeBracketed(text, start);
    removeDashedKeyword(text, start);
    trimBlanks(text, start);
}

BaseAndCut baseAndCut(const QString &title)
{
    std::u16string text;
    appendLowerCased(text, title);
    const QString &cut = cutOf(text);
    reduceToBase(text);
    // Not by a conversion, which would take a mark at the start for one of the order of bytes.
    return {QStringView(text).toString(), cut};
}

QString capitalised(const QString &text)
{
    QString result;
    bool atWordStart = true;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool pair =
            text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        const QString character = text.sliced(i, pair ? 2 : 1);
        const char32_t codePoint =
            pair ? QChar::surrogateToUcs4(text[i], text[i + 1]) : text[i].unicode();
        result += atWordStart && QChar::isLetter(codePoint) ? character.toUpper() : character;
        atWordStart = isWhiteSpace(text[i]);
        i += pair;
    }
    return result;
}

} // namespace tarnwick
