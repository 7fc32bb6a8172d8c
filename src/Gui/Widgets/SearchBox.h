#pragma once

#include <QComboBox>

namespace ChipLoom {

/// The box of a search that also lists what can be searched for. What is typed stays until an entry is chosen: neither
/// the arrow keys nor the wheel put some entry in its place.
class SearchBox : public QComboBox
{
    Q_OBJECT
public:
    explicit SearchBox(QWidget *parent = nullptr);

signals:
    /// The arrow key that elsewhere leads from a search to what it found.
    void downPressed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
};

} // namespace ChipLoom
