#pragma once

#include "Model/ShareParameter.h"

#include <QHash>
#include <QWidget>

#include <functional>

class QLabel;
class QStackedWidget;

namespace ChipLoom {

/// The pane beside the module tree: one page for each module, made when it is first shown.
class ConfigurationPane : public QWidget
{
    Q_OBJECT
public:
    /// Makes the page of a module; never null. The page shows what the design holds and keeps nothing of its own, for
    /// it is thrown away and made again when the language changes.
    using PageFactory = std::function<QWidget *(const PeripheralsBaseInfo &module)>;

    explicit ConfigurationPane(PageFactory factory, QWidget *parent = nullptr);

    void showModule(const PeripheralsBaseInfo &module);
    QString shownModule() const { return m_shownModule; }
    QWidget *shownPage() const;
    /// Throws all pages away.
    void clearPages();
    void TranslatorUI();

private:
    PageFactory m_factory;
    QLabel *m_title;
    QLabel *m_hint;
    QStackedWidget *m_stack;
    QHash<QString, QWidget *> m_pages;
    QString m_shownModule;
};

} // namespace ChipLoom
