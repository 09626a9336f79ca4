#include "serato/serato_track.h"

#include "foundation/numbers.h"
#include "foundation/paths.h"
#include "foundation/text.h"

#include <QStringBuilder>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// Stands between artist and title where both are in the title.
const QString &separator()
{
    static const QString text = u" - "_s;
    return text;
}

bool isNumberCharacter(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    return category == QChar::Number_DecimalDigit || category == QChar::Number_Letter ||
           category == QChar::Number_Other;
}

/// The longest start of a text that consists of number characters and points.
QStringView leadingNumber(QStringView text)
{
    qsizetype end = 0;
    while (end < text.size()) {
        const bool pair =
            text[end].isHighSurrogate() && end + 1 < text.size() && text[end + 1].isLowSurrogate();
        const char32_t character =
            pair ? QChar::surrogateToUcs4(text[end], text[end + 1]) : text[end].unicode();
        if (character != U'.' && !isNumberCharacter(character))
            break;
        end += pair ? 2 : 1;
    }
    return text.first(end);
}

bool holdsText(const QString &text)
{
    return !trimmedBlanks(text).isEmpty();
}

} // namespace

QString SeratoTrack::absolutePath() const
{
    return relativePath.startsWith(u'/') ? relativePath : u'/' % relativePath;
}

QUrl SeratoTrack::fileUrl() const
{
    return QUrl::fromLocalFile(absolutePath());
}

QString SeratoTrack::fileName() const
{
    return lastPathComponent(absolutePath());
}

QString SeratoTrack::displayArtist() const
{
    if (!artist.isEmpty())
        return artist;
    const qsizetype at = title.indexOf(separator());
    return at < 0 ? QString() : title.first(at);
}

QString SeratoTrack::displayTitle() const
{
    if (!artist.isEmpty())
        return title;
    const qsizetype at = title.indexOf(separator());
    return at < 0 ? title : title.sliced(at + separator().size());
}

bool SeratoTrack::hasTitle() const
{
    return holdsText(title);
}

bool SeratoTrack::hasArtist() const
{
    return holdsText(displayArtist());
}

bool SeratoTrack::hasGenre() const
{
    return holdsText(genre);
}

bool SeratoTrack::hasKey() const
{
    return holdsText(key);
}

bool SeratoTrack::hasBpm() const
{
    return holdsText(bpm) && bpm != "0"_L1;
}

int SeratoTrack::bitrateKbps() const
{
    const double value = parseDouble(leadingNumber(bitrateText)).value_or(0.0);
    return int(std::min(value, double(std::numeric_limits<int>::max())));
}

} // namespace tarnwick
