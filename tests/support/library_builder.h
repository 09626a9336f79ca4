#pragma once

#include "serato/serato_library.h"
#include "support/serato_builder.h"
#include "support/test_folder.h"

namespace tarnwick::testing {

/// A library folder with its database and the audio files beside it, in a folder of the test's own.
class LibraryBuilder
{
public:
    const TestFolder &folder() const { return m_folder; }

    /// Writes an audio file and adds its track; gives the file's path.
    QString addFile(const QString &name, const QByteArray &content,
                    const QByteArrayList &moreFields = {})
    {
        const QString file = m_folder.write(name, content);
        addTrack(file, moreFields);
        return file;
    }

    /// Adds a track at an absolute path, which the database keeps without its leading slash.
    void addTrack(const QString &path, const QByteArrayList &moreFields = {})
    {
        m_records.append(trackRecord(
            QByteArrayList{textRecord("pfil", QStringView(path).sliced(1))} + moreFields));
    }

    void addRecord(const QByteArray &bytes) { m_records.append(bytes); }

    /// Writes the database of all that was added so far.
    SeratoLibrary::Location write() const
    {
        m_folder.write(QStringLiteral("_Serato_/database V2"),
                       databaseVersion() + m_records.join());
        return location();
    }

    SeratoLibrary::Location location() const
    {
        return {QStringLiteral("Test"),
                QUrl::fromLocalFile(m_folder.path(QStringLiteral("_Serato_"))), true, true};
    }

private:
    TestFolder m_folder;
    QByteArrayList m_records;
};

} // namespace tarnwick::testing
