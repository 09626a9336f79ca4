#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>

namespace tarnwick {
class Utf8Text;
}

/// The forms of text that the exporters share. Pure; safe on any thread.
namespace tarnwick::ExportUtil {

/// The text with the five characters that XML keeps for itself as entities. Nothing else is
/// touched: control characters pass through as they are.
QString xml(QStringView text);

/// "file://localhost" and the path, in which every byte of its UTF-8 form but ASCII letters,
/// digits, "-", ".", "_", "~" and "/" is percent-encoded, with upper-case digits.
QString fileUrl(QStringView path);
void addFileUrl(Utf8Text &out, QStringView path);

/// The whole seconds that "m:s" or "h:m:s" states; 0 for anything else. A piece that is no whole
/// number doesn't count as a piece, so that "04:23.17" gives 0.
qint64 seconds(QStringView lengthText);

/// What `fileUrl` encodes is taken back: the path as it was. A bad escape, or bytes that are no
/// UTF-8, leave the whole text as it stands.
QString withoutPercentEncoding(QByteArrayView text);

} // namespace tarnwick::ExportUtil
