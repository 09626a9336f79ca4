#include "crate_plan.h"

#include "music_names.h"
#include "path_plan.h"

#include <QSet>

#include <algorithm>

namespace tarnwick::demo {

using namespace Qt::StringLiterals;

namespace {

constexpr int orphansPermille = 150;

class CratePlanner
{
public:
    CratePlanner(const QList<TrackPlan> &tracks, const QString &home, Random random)
        : m_tracks(tracks)
        , m_home(withoutLeadingSlash(home))
        , m_random(random)
    {
        for (qsizetype i = 0; i < tracks.size(); ++i) {
            if (!m_random.permille(orphansPermille)) {
                m_filed.append(i);
            }
        }
    }

    QList<CratePlan> plan()
    {
        if (!m_filed.isEmpty()) {
            addGenreCrates();
            addNights(std::clamp<qsizetype>(m_filed.size() / 80, 2, 180));
            addNearCopies();
            addStaleEntries();
            addRepeatedEntries();
        }
        add(u"New Crate"_s, {});
        add(u"To sort%%This week"_s, {});
        return m_crates;
    }

private:
    void add(const QString &name, const QStringList &paths)
    {
        QString free = name;
        for (int number = 2; m_names.contains(free.toLower()); ++number) {
            free = name + u" (%1)"_s.arg(number);
        }
        m_names.insert(free.toLower());
        m_crates.append({free, paths});
    }

    /// Every filed track is in the crate of its artist's genre, whatever its own genre says.
    void addGenreCrates()
    {
        const auto all = genres();
        QList<QStringList> byGenre(static_cast<qsizetype>(all.size()));
        for (const qsizetype index : std::as_const(m_filed)) {
            byGenre[m_tracks[index].genreIndex].append(m_tracks[index].path);
        }
        for (qsizetype i = 0; i < byGenre.size(); ++i) {
            if (!byGenre[i].isEmpty()) {
                addWithSubcrates(all[static_cast<size_t>(i)].spellings.front().toString(),
                                 byGenre[i]);
            }
        }
    }

    /// A track is in the genre's crate itself or in one of its subcrates.
    void addWithSubcrates(const QString &name, const QStringList &paths)
    {
        QList<QStringList> parts(4);
        for (const QString &path : paths) {
            parts[std::max(0, m_random.between(-5, 3))].append(path);
        }
        const QString moods[] = {{}, u"Warm up"_s, u"Peak time"_s, u"Closing"_s};
        for (qsizetype i = 0; i < parts.size(); ++i) {
            if (i == 0 || !parts[i].isEmpty()) {
                add(i == 0 ? name : name + crateSeparator.toString() + moods[i], parts[i]);
            }
        }
    }

    QStringList someTracks(qsizetype count)
    {
        QStringList paths;
        QSet<qsizetype> taken;
        for (qsizetype i = 0; i < count; ++i) {
            const qsizetype index = m_random.pick(m_filed);
            if (!taken.contains(index)) {
                taken.insert(index);
                paths.append(m_tracks[index].path);
            }
        }
        return paths;
    }

    void addNights(qsizetype count)
    {
        for (qsizetype i = 0; i < count; ++i) {
            const int year = m_random.between(2020, 2023);
            const QString month = twoDigits(m_random.between(1, 12));
            const QString day = twoDigits(m_random.between(1, 28));
            const QString date = u"%1-%2-%3"_s.arg(QString::number(year), month, day);
            const QString folder = m_random.permille(600) ? u"Gigs %1%%"_s.arg(year) : QString();
            const auto size = std::min<qsizetype>(m_filed.size(), m_random.between(20, 75));
            m_nights.append(m_crates.size());
            const QString name = folder + date + u' ' + venueName(m_random);
            add(name, someTracks(size));
        }
    }

    /// One night in five has a near copy: prepared for a second time, or kept "just in case".
    void addNearCopies()
    {
        for (qsizetype i = 0; i < m_nights.size(); i += 5) {
            const CratePlan night = m_crates[m_nights[i]];
            const qsizetype dropped = m_random.below(static_cast<int>(night.paths.size()) / 8 + 1);
            QStringList paths = night.paths.sliced(dropped);
            paths += someTracks(paths.size() / 12);
            add(night.name + (i % 2 == 0 ? u" copy"_s : u" v2"_s), paths);
        }
    }

    /// What was dragged into a crate twice is in it twice.
    void addRepeatedEntries()
    {
        for (qsizetype i = 0; i < m_nights.size(); i += 4) {
            QStringList &paths = m_crates[m_nights[i]].paths;
            paths.append(paths.first());
        }
    }

    void addStaleEntries()
    {
        for (qsizetype i = 0; i < m_nights.size(); i += 3) {
            QStringList &paths = m_crates[m_nights[i]].paths;
            for (int number = m_random.between(1, 3); number > 0; --number) {
                const QString artist = artistName(m_random);
                const QString name = artist + u" - "_s + songTitle(m_random);
                paths.insert(m_random.below(static_cast<int>(paths.size()) + 1),
                             m_home + u"/Music/Old drive/"_s + name + u".mp3"_s);
            }
        }
    }

    const QList<TrackPlan> &m_tracks;
    QString m_home;
    Random m_random;
    QList<qsizetype> m_filed;
    QList<qsizetype> m_nights; ///< places in m_crates
    QList<CratePlan> m_crates;
    QSet<QString> m_names;
};

} // namespace

QList<CratePlan> planCrates(const QList<TrackPlan> &tracks, const QString &home, Random random)
{
    return tracks.isEmpty() ? QList<CratePlan>() : CratePlanner(tracks, home, random).plan();
}

} // namespace tarnwick::demo
