#pragma once

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMap>
#include <QProcess>
#include <QStringList>

namespace tarnwick::testing {

/// What `tools/serato_dump` reads in a `_Serato_` folder, by file name: a reader that shares no
/// code with the program. The test's target defines PYTHON and SERATO_DUMP.
class LibraryDump
{
public:
    /// Indented lines, as the tool prints them.
    using Lines = QStringList;

    static LibraryDump of(const QString &folder)
    {
        QProcess tool;
        tool.start(QStringLiteral(PYTHON),
                   {QStringLiteral("-B"), QStringLiteral(SERATO_DUMP), folder});
        if (!tool.waitForFinished(60'000) || tool.exitCode() != 0)
            qFatal("the dump failed: %s", tool.readAllStandardError().constData());
        LibraryDump dump;
        QString file;
        for (const QString &line : QString::fromUtf8(tool.readAllStandardOutput()).split(u'\n')) {
            if (!line.startsWith(u' ')) {
                file = line;
                if (!file.isEmpty())
                    dump.m_files[file] = {};
            } else {
                dump.m_files[file] << line;
            }
        }
        return dump;
    }

    Lines linesOf(const QString &file) const { return m_files.value(file); }

    /// The entries of all crates by name, as they stand in the files.
    QMap<QString, QStringList> crates() const
    {
        QMap<QString, QStringList> crates;
        for (auto file = m_files.begin(); file != m_files.end(); ++file) {
            const QString folder = QStringLiteral("Subcrates/");
            if (file.key().startsWith(folder))
                crates[file.key().sliced(folder.size()).chopped(6)] = entriesOf(file.value());
        }
        return crates;
    }

    /// The tracks of the database, each as its text fields by tag.
    QList<QHash<QString, QString>> tracks() const
    {
        QList<QHash<QString, QString>> tracks;
        for (const QString &line : linesOf(QStringLiteral("database V2"))) {
            if (line == QStringLiteral("  otrk"))
                tracks.append(QHash<QString, QString>());
            else if (line.startsWith(QStringLiteral("    ")) && line.endsWith(u'"'))
                tracks.last()[line.sliced(4, 4)] = textIn(line);
        }
        return tracks;
    }

private:
    static QString textIn(const QString &line)
    {
        const QString quoted = line.sliced(line.indexOf(u'"'));
        return QJsonDocument::fromJson('[' + quoted.toUtf8() + ']').array().at(0).toString();
    }

    static QStringList entriesOf(const Lines &lines)
    {
        QStringList entries;
        for (const QString &line : lines) {
            if (line.startsWith(QStringLiteral("    ptrk  ")))
                entries << textIn(line);
        }
        return entries;
    }

    QMap<QString, Lines> m_files;
};

} // namespace tarnwick::testing
