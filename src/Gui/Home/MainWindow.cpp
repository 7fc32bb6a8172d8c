#include "Gui/Home/MainWindow.h"

#include "Base/Version.h"
#include "Gui/App/Style.h"

namespace ChipLoom {

MainWindow::MainWindow(QWidget *parent) : QWidget(parent)
{
    setWindowTitle(QStringLiteral("ZV32 Chip Loom ") + QLatin1String(ProgramVersion));
    Style::setRole(this, Style::Role::Window);
    resize(1350, 600);
}

} // namespace ChipLoom
