#pragma once

#include "Model/ShareParameter.h"

#include <QHash>
#include <QWidget>

#include <functional>

class QLabel;
class QStackedWidget;

namespace ChipLoom {

class ElidedLabel;

/// The pane beside the module tree: one page for each module, made when it is first shown.
class ConfigurationPane : public QWidget
{
    Q_OBJECT
public:
    /// Makes the page of a module; never null. The page shows what the design holds and keeps nothing of its own, for
    /// it is thrown away and made again when the language changes; only its tab and what is searched for there pass
    /// over.
    using PageFactory = std::function<QWidget *(const PeripheralsBaseInfo &module)>;

    explicit ConfigurationPane(PageFactory factory, QWidget *parent = nullptr);

    /// `title` stands above the page; where there is no room for it, its end does.
    void showModule(const PeripheralsBaseInfo &module, const QString &title);
    QString shownModule() const { return m_shownModule; }
    QWidget *shownPage() const;
    /// Throws all pages away.
    void clearPages();
    /// Throws all pages away, to be made again in the present language when they are shown.
    void renewPages();
    void TranslatorUI();

protected:
    bool event(QEvent *event) override;

private:
    /// What a user chose to see of a page.
    struct View
    {
        int tab = -1;
        QHash<int, QString> searches; ///< by the tab in which the field stands
    };

    static View viewOf(const QWidget &page);
    static void recall(QWidget &page, const View &view);

    PageFactory m_factory;
    ElidedLabel *m_title;
    QLabel *m_hint;
    QStackedWidget *m_stack;
    QHash<QString, QWidget *> m_pages;
    QHash<QString, View> m_views; ///< of pages that wait to be made again
    QString m_shownModule;
};

} // namespace ChipLoom
