#include "foundation/utf8.h"

namespace tarnwick {

QString decodeUtf8(QByteArrayView bytes)
{
    constexpr QByteArrayView mark("\xEF\xBB\xBF");
    qsizetype marks = 0;
    for (; bytes.startsWith(mark); ++marks)
        bytes = bytes.sliced(mark.size());
    if (marks == 0)
        return QString::fromUtf8(bytes);
    return QString(marks, QChar::ByteOrderMark) + QString::fromUtf8(bytes);
}

} // namespace tarnwick
