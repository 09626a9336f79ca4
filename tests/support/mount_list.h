#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>

namespace tarnwick::testing {

/// A list of mounts as the kernel keeps it, one line for each pair of a mount point and the name of
/// a file system.
inline QByteArray mountList(const QList<std::pair<QString, QByteArray>> &mounts)
{
    QByteArray list;
    int number = 20;
    for (const auto &[mountPoint, type] : mounts) {
        const QByteArray escaped = mountPoint.toUtf8().replace('\\', "\\134").replace(' ', "\\040");
        list += QByteArray::number(number++) + " 1 0:5 / " + escaped +
                " rw,relatime shared:7 master:1 - " + type + " server:/share rw,vers=4.2\n";
    }
    return list;
}

} // namespace tarnwick::testing
