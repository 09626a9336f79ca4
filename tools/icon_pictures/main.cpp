// Draws a square SVG as PNG pictures of the sizes that an icon theme wants:
//
//   icon_pictures DRAWING.svg FOLDER SIZE...
//
// The picture of 48 pixels becomes FOLDER/48x48/apps/DRAWING.png.

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

int complain(const QString &message)
{
    std::fprintf(stderr, "icon_pictures: %s\n", qUtf8Printable(message));
    return 1;
}

bool draw(QSvgRenderer &drawing, int size, const QString &file)
{
    QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter);
    painter.end();
    return QDir().mkpath(QFileInfo(file).path()) && picture.save(file);
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (arguments.size() < 3)
        return complain(u"usage: icon_pictures DRAWING.svg FOLDER SIZE..."_s);
    QSvgRenderer drawing(arguments[0]);
    if (!drawing.isValid())
        return complain(u"%1 is no drawing"_s.arg(arguments[0]));
    const QString name = QFileInfo(arguments[0]).completeBaseName();
    for (const QString &text : arguments.sliced(2)) {
        const int size = text.toInt();
        const QString file = u"%1/%2x%2/apps/%3.png"_s.arg(arguments[1]).arg(size).arg(name);
        if (size <= 0 || !draw(drawing, size, file))
            return complain(u"can't draw %1"_s.arg(file));
    }
    return 0;
}
