// Prints what the clipboard of the display holds: text, or "picture WIDTH HEIGHT".

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <cstdio>

int main(int argc, char** argv)
{
    QApplication const application(argc, argv);
    QImage const picture = QApplication::clipboard()->image();
    if (picture.isNull())
        std::printf("%s", QApplication::clipboard()->text().toUtf8().constData());
    else
        std::printf("picture %d %d", picture.width(), picture.height());
    return 0;
}
