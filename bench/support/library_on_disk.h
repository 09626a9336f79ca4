#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <string>
#include <vector>

namespace tarnwick::bench {

/// The bytes of a `database V2` of so many tracks, about 590 bytes each. `folder` is where the
/// tracks lie, without a leading slash; track i is called "i.mp3" there.
QByteArray databaseImage(int tracks, const QString &folder);

/// Files "0.mp3", "1.mp3" … with an ID3v2 tag of so many bytes that holds Serato's frames and the
/// padding or picture around them, and a little audio behind it.
std::vector<std::string> writeTaggedFiles(const QString &folder, int count, int tagBytes);

/// Where to make a folder of many files: in memory where the system has such a place, since making
/// and removing a hundred thousand files takes minutes on some disks.
QString templateInMemory();

/// A library in a folder of its own: the database and every file that it names.
class LibraryOnDisk
{
public:
    LibraryOnDisk(int tracks, int tagBytes);

    QString seratoFolder() const { return m_folder.filePath(QStringLiteral("_Serato_")); }
    QString database() const { return seratoFolder() + QStringLiteral("/database V2"); }
    const std::vector<std::string> &files() const { return m_files; }

private:
    QTemporaryDir m_folder{templateInMemory()};
    std::vector<std::string> m_files;
};

} // namespace tarnwick::bench
