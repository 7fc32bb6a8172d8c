#pragma once

#include <QWidget>

#include <memory>

class QAction;
class QGroupBox;
class QLabel;
class QToolBar;
class QVBoxLayout;

namespace ChipLoom {

class ClockPageBinding;
class ZV32MCUPLLView;
class ZV32PLLConfig;

/// The page "Clock Configuration": the canvas of the series that is open and the tool bar over it. Empty while no
/// series has a clock page.
class ZV32PLLConfigPage : public QWidget
{
    Q_OBJECT

public:
    /// `clock` must outlive the page.
    explicit ZV32PLLConfigPage(ZV32PLLConfig &clock, QWidget *parent = nullptr);
    ~ZV32PLLConfigPage() override;

    /// The canvas, or null. It is made when the page is first shown.
    ZV32MCUPLLView *view() const { return m_pllConfigWidget; }

    /// What a menu shows of the tool bar.
    QList<QAction *> toolActions() const
    {
        return {m_ZoomIn_Action, m_ZoomOut_Action, m_ZoomReset_Action, m_Fit_Action};
    }

    void ZoomIn();
    void ZoomOut();
    void ZoomReset();
    void FitToWindow();
    void TranslatorUI();

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void makeView();
    void dropView();

    ZV32PLLConfig &m_clock;
    QVBoxLayout *m_main_VBoxLayout;
    QGroupBox *m_toolBarGroupBox;
    QLabel *m_MCUSerialsName_Label;
    QToolBar *m_ToolBar;
    QAction *m_ZoomIn_Action;
    QAction *m_ZoomOut_Action;
    QAction *m_ZoomReset_Action;
    QAction *m_Fit_Action;
    QAction *m_ConfigReset_Action;
    std::unique_ptr<ClockPageBinding> m_binding;
    ZV32MCUPLLView *m_pllConfigWidget = nullptr;
};

} // namespace ChipLoom
