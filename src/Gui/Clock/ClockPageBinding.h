#pragma once

#include "ClockConfig/ZV32MCUPLL.h"
#include "Gui/Clock/ClockPageModel.h"

#include <optional>

namespace ChipLoom {

/// Puts the state of a clock page into words and colours, and hands what the user does to it.
class ClockPageBinding : public QObject, public ClockPageModel
{
    Q_OBJECT

public:
    /// `page` must outlive this.
    explicit ClockPageBinding(ZV32MCUPLL &page);

    ClockFace face(const ClockSubject &subject) const override;
    ClockPaths runningPaths() const override;
    ClockFormOnly pllForm() const override;

    void choose(ClockField field, int option) override;
    void type(ClockField field, const QString &text) override;
    void enter(ClockField field, const QString &text) override;

    QVector<ClockSolutionRow> solutions() const override;
    void chooseSolution(int row) override;

private:
    void apply(const ClockChange &change);
    void tell();

    ClockFace fieldFace(ClockField field) const;
    ClockFace choiceFace(ClockField field) const;
    ClockFace typedFace(ClockField field) const;
    ClockFace branchFace(ClockBranch branch) const;
    ClockFace extraFace(ClockExtra extra) const;
    ClockFace resultFace(ClockBranch branch) const;
    ClockFace infoFace(ClockExtra extra) const;
    ClockFace sclkErrorFace() const;
    QString rtcText() const; ///< kHz
    QString outputText(ClockBranch output, bool source) const;

    /// The SCLK that was asked for last, while the tree still stands as that request left it.
    std::optional<double> wantedSclk() const;
    double solutionTarget() const;

    ZV32MCUPLL &m_page;
    std::optional<double> m_wantedSclk;
    double m_achievedSclk = 0.0;
    bool m_applying = false;
};

} // namespace ChipLoom
