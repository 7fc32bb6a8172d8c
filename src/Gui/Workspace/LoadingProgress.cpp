#include "Gui/Workspace/LoadingProgress.h"

#include "Gui/App/Style.h"

#include <QPixmap>

namespace ChipLoom {

namespace {

constexpr int NoticedAfterMs = 250;
constexpr QSize BoxSize{420, 150};

} // namespace

LoadingProgress::LoadingProgress(int steps, QWidget *parent) : QProgressDialog(parent)
{
    setWindowTitle(QStringLiteral("ZV32 Chip Loom"));
    setLabelText(tr("Loading......"));
    setFont(Style::font(12));
    setCancelButton(nullptr);
    setWindowModality(Qt::ApplicationModal);
    setFixedSize(BoxSize);
    const QPixmap cover(QStringLiteral(":/image/PPT cover.png"));
    if (!cover.isNull()) {
        QPalette ground = palette();
        ground.setBrush(QPalette::Window, cover.scaled(BoxSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        setPalette(ground);
    }
    setMinimumDuration(NoticedAfterMs);
    setRange(0, steps);
    setValue(0);
}

void LoadingProgress::advance()
{
    setValue(value() + 1);
}

} // namespace ChipLoom
