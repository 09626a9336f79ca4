#include "foundation/byte_format.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace tarnwick::ByteFmt {

namespace {

struct Unit
{
    quint64 bytes;
    int decimals;
    const char16_t *suffix;
};

constexpr Unit units[] = {
    {1'000'000'000, 2, u" GB"},
    {1'000'000, 1, u" MB"},
    {1'000, 0, u" KB"},
};

const Unit &unitFor(quint64 bytes)
{
    for (const Unit &unit : units) {
        if (bytes >= unit.bytes)
            return unit;
    }
    return units[std::size(units) - 1];
}

quint64 powerOfTen(int exponent)
{
    return exponent == 0 ? 1 : 10 * powerOfTen(exponent - 1);
}

/// The digits behind the decimal mark, trailing zeros dropped; empty where nothing remains.
QString fractionDigits(quint64 fraction, int decimals)
{
    QString digits = QString::number(fraction).rightJustified(decimals, u'0');
    while (digits.endsWith(u'0'))
        digits.chop(1);
    return digits;
}

} // namespace

QString string(quint64 bytes)
{
    if (bytes == 0)
        return u"0 MB"_s;
    const Unit &unit = unitFor(bytes);
    const quint64 scale = powerOfTen(unit.decimals);
    const quint64 step = unit.bytes / scale;
    const quint64 rounded = bytes / step + (bytes % step >= (step + 1) / 2 ? 1 : 0);
    QString text = QString::number(rounded / scale);
    if (const QString digits = fractionDigits(rounded % scale, unit.decimals); !digits.isEmpty())
        text += QLocale::system().decimalPoint() + digits;
    return text + QString::fromUtf16(unit.suffix);
}

} // namespace tarnwick::ByteFmt
