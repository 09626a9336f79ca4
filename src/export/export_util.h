#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

/// The forms of text that the exporters share. Pure; safe on any thread.
namespace tarnwick::ExportUtil {

/// The text with the five characters that XML keeps for itself as entities. Nothing else is
/// touched: control characters pass through as they are.
QString xml(QStringView text);

/// "file://localhost" and the path, in which every byte of its UTF-8 form but ASCII letters,
/// digits, "-", ".", "_", "~" and "/" is percent-encoded, with upper-case digits.
QString fileUrl(QStringView path);

/// The whole seconds that "m:s" or "h:m:s" states; 0 for anything else. A piece that is no whole
/// number doesn't count as a piece, so that "04:23.17" gives 0.
qint64 seconds(QStringView lengthText);

/// What `fileUrl` encodes is taken back: the path as it was. A bad escape, or bytes that are no
/// UTF-8, leave the whole text as it stands.
QString withoutPercentEncoding(QByteArrayView text);

// The same, appended to a document in UTF-8. An unpaired surrogate becomes U+FFFD.
void appendXml(QByteArray &out, QStringView text);
void appendFileUrl(QByteArray &out, QStringView path);
/// In decimal, without grouping.
void appendNumber(QByteArray &out, qint64 number);
/// With two decimals and a point, in every locale.
void appendTwoDecimals(QByteArray &out, double number);

} // namespace tarnwick::ExportUtil
