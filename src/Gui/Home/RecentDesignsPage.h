#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace ChipLoom {

/// The designs that were open last, one line each. A line's context menu takes it off the list.
class RecentDesignsPage : public QWidget
{
    Q_OBJECT
public:
    /// `file` holds the list.
    explicit RecentDesignsPage(const QString &file, QWidget *parent = nullptr);

    /// Reads the list again.
    void CreateDesignListLayout();
    void TranslatorUI();

signals:
    /// A line was clicked, or chosen by key.
    void designChosen(const QString &path);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void LinkRightButtonClicked_Slot(const QPoint &position);
    void DeleteSelectedDesignItem();

    QString m_file;
    QLabel *m_empty_Label;
    QVBoxLayout *m_list;
    QWidget *m_pCurrentLinkButton = nullptr; // the entry whose menu is open
};

} // namespace ChipLoom
