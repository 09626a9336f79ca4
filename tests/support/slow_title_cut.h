#pragma once

#include "analysis/title_cut.h"
#include "foundation/text.h"

#include <QList>
#include <QRegularExpression>

#include <utility>

/// What a title tells of its cut, by regular expressions: slower and shorter than the program's own
/// rule, to hold that against.
namespace tarnwick::testing {

/// Of several the last counts.
inline const QList<std::pair<QString, QString>> &cutKeywords()
{
    using namespace Qt::StringLiterals;
    static const QList<std::pair<QString, QString>> keywords = {
        {u"radio"_s, u"Radio edit"_s},
        {u"extended"_s, u"Extended"_s},
        {u"instrumental"_s, u"Instrumental"_s},
        {u"acapella"_s, u"Acapella"_s},
        {u"acappella"_s, u"Acapella"_s},
        {u"intro"_s, u"Intro"_s},
        {u"clean"_s, u"Clean"_s},
        {u"dirty"_s, u"Dirty"_s},
        {u"remix"_s, u"Remix"_s},
        {u"edit"_s, u"Edit"_s},
        {u"original mix"_s, u"Original"_s},
        {u"club"_s, u"Club mix"_s},
        {u"dub"_s, u"Dub"_s},
        {u"remaster"_s, u"Remaster"_s},
        {u"live"_s, u"Live"_s},
        {u"vip"_s, u"VIP"_s},
    };
    return keywords;
}

namespace detail {

/// A pattern with white space and line ends spelled out, so that they don't depend on the engine.
inline QRegularExpression cutPattern(QString text)
{
    using namespace Qt::StringLiterals;
    text.replace(u"\\s"_s, u"[\\x{9}-\\x{D}\\x{85}\\x{2028}\\x{2029}\\p{Zs}]"_s);
    text.replace(u".*"_s, u"[^\\x{A}-\\x{D}\\x{85}\\x{2028}\\x{2029}]*"_s);
    return QRegularExpression(text);
}

inline QString withoutFirst(const QString &text, const QRegularExpression &expression)
{
    const QRegularExpressionMatch match = expression.match(text);
    if (!match.hasMatch())
        return text;
    return text.first(match.capturedStart()) + text.sliced(match.capturedEnd());
}

} // namespace detail

inline BaseAndCut slowBaseAndCut(const QString &title)
{
    using namespace Qt::StringLiterals;
    static const QRegularExpression bracketed = detail::cutPattern(u"\\s*[\\(\\[].*"_s);
    static const QRegularExpression dashed = detail::cutPattern(
        u"\\s*-\\s*(radio|extended|instrumental|acap+ella|intro|clean|dirty|remix|edit|original mix"
        "|club|dub|remaster|live|vip).*"_s);
    const QString text = lowerCased(title);
    QString cut = u"Original"_s;
    for (const auto &[keyword, label] : cutKeywords()) {
        if (text.contains(keyword))
            cut = label;
    }
    const QString base = detail::withoutFirst(detail::withoutFirst(text, bracketed), dashed);
    return {trimmedBlanks(base).toString(), cut};
}

} // namespace tarnwick::testing
