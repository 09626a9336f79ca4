// A session of the history.

#include "fuzz_input.h"
#include "serato/serato_history.h"

#include <QDate>

using namespace Qt::StringLiterals;
using namespace tarnwick;
using namespace tarnwick::fuzzing;

namespace {

bool isKey(const QString &text)
{
    return text.size() == 20 && std::all_of(text.begin(), text.end(), [](QChar digit) {
               return (digit >= u'0' && digit <= u'9') || (digit >= u'a' && digit <= u'f');
           });
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::vector<PlayEvent> events;
    SeratoParser::Notes notes;
    const auto laneFor = [](const QString &path) { return u"lane of "_s + path; };
    SeratoHistory::appendEvents(events, viewOf(data, size), laneFor, &notes);
    if (!events.empty())
        noteRead();
    for (const PlayEvent &event : events) {
        require(!event.title.isEmpty(), "a play has a title");
        require(isKey(event.trackKey), "a key of 20 digits");
        require(event.trackKey == SeratoHistory::trackKey(event.artist, event.title), "its key");
        const QDate week = QDate::fromString(event.week, Qt::ISODate);
        require(week.dayOfWeek() == Qt::Monday, "a week is named by its Monday");
        require(event.lane == laneFor(event.playedPath), "its lane");
    }
    std::vector<PlayEvent> again = events;
    SeratoHistory::appendEvents(again, viewOf(data, size), laneFor);
    require(again.size() == 2 * events.size(), "plays are added behind those that are there");
    return 0;
}
