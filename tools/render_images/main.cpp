// Build tool: renders the SVG sources of the pictures to PNG files at one and two times their size.
//
//     render_images <output folder> <a.svg> ...
//
// gives <output folder>/a.png and a@2x.png. The sources hold no text, so that the result depends on no font.

#include <QCoreApplication>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

namespace {

bool render(QSvgRenderer &source, const QString &path, int scale)
{
    QImage image(source.defaultSize() * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    source.render(&painter);
    painter.end();
    return image.save(path, "PNG");
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    for (const QString &path : arguments.mid(2)) {
        QSvgRenderer source(path);
        const QString target = arguments[1] + '/' + QFileInfo(path).completeBaseName();
        if (!source.isValid() || !render(source, target + ".png", 1) || !render(source, target + "@2x.png", 2)) {
            std::fprintf(stderr, "%s: cannot be rendered to %s.png\n", qPrintable(path), qPrintable(target));
            return 1;
        }
    }
    return 0;
}
