#include "Gui/App/Startup.h"

#include "Base/AppPaths.h"
#include "Gui/App/Style.h"
#include "Gui/Home/MainWindow.h"

#include <QApplication>
#include <QIcon>

namespace ChipLoom {

int runChipLoom(int argc, char **argv)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/image/ZevtraIcon")));
    Style::apply(application);

    MainWindow window;
    window.show();
    return QApplication::exec();
}

} // namespace ChipLoom
