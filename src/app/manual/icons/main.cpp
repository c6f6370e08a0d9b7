// Draws the program's icon at the sizes by which the files are called:
//
//     make-icons ICON.svg FOLDER/16.png FOLDER/22.png ...

#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace {

bool Draw(QSvgRenderer& icon, const QString& file) {
    const int size = QFileInfo(file).baseName().toInt();
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    icon.render(&painter);
    return painter.end() && image.save(file);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 3)
        return 2;
    QSvgRenderer icon(arguments[1]);
    bool drawn = icon.isValid();
    for (const QString& file : arguments.sliced(2))
        drawn = drawn && Draw(icon, file);
    return drawn ? 0 : 1;
}
