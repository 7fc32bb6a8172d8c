#pragma once

#include "GenerateCode/Generatecode_ALL.h"

#include <QThread>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace ChipLoom {

class Design;

/// What the project values of a design say about its generation.
GenerationOptions generationOptions(const Design &design);

/// Signals that were placed by hand and whose peripheral's mode is off, one for each pin: "PA9-USART1_TX".
QStringList manualPinsWithoutEffect(const Design &design);

/// Peripherals and middlewares with a wrong or missing parameter.
QStringList modulesWithErrors(const Design &design);

/// Which page shows what stopped a generation.
enum class GenerationStop { None, Clock, Pins, Parameters, NoGenerator };

/// Looks for what must not be generated, in this order, and tells the first of it through the design's prompt. Before
/// it tells of pins or parameters it calls `show`, so that they can be seen meanwhile.
GenerationStop checkBeforeGeneration(Design &design, const std::function<void()> &show = {});

/// Runs one generation and keeps its account. It prompts nothing.
class GenerateCodeThread : public QThread
{
    Q_OBJECT
public:
    using QThread::QThread;

    /// `generator` outlives the run. Without `write` nothing is written.
    void set_genCode(GenerateCode_ALL *generator, bool write);
    void setfileDirectory(const QString &directory) { m_fileDirectory = directory; }
    /// Once the thread has finished.
    const GenerationRecord &record() const { return m_record; }

signals:
    void GenerateCodeFinished(bool ok);

protected:
    void run() override;

private:
    QString m_fileDirectory;
    GenerateCode_ALL *m_genCode = nullptr;
    bool m_write = true;
    GenerationRecord m_record;
};

/// One generation of a design into a project directory ("inc" and "src" below it), whose account can be had before
/// anything is written.
class CodeGeneration
{
public:
    /// The design outlives it.
    CodeGeneration(Design &design, QString directory) : m_design(design), m_directory(std::move(directory)) {}

    /// Nothing deferred runs meanwhile. With `whileWaiting` in a thread of its own, and that is called every 10 ms.
    /// Without `write` only the account, and what was made for it is written by the next run unless the design or the
    /// files have changed since. What is written brings the design's order of calls up to date.
    const GenerationRecord &run(bool write, const std::function<void()> &whileWaiting = {});
    /// Of the last run.
    const GenerationRecord &record() const { return m_record; }
    /// Of the last run; null where the series has none.
    const GenerateCode_ALL *generator() const { return m_generator.get(); }

    /// Tells apart designs whose code may differ, by what they are now; see `Fingerprint`.
    quint64 fingerprint();
    /// The same with the order of calls that the last run gave the design, and that a run would leave as it is; none if
    /// the design has changed between the two.
    std::optional<quint64> settledFingerprint() const;
    /// The caller knows that files of these names, below the directory, are all that would be made and stand as they
    /// would be left. The next run says so, unless the design has changed, and makes nothing. `settled`: it needs not
    /// bring the order of calls up to date either.
    void setUnchanged(const QStringList &files, bool settled);

private:
    void forget();
    void readDesign();
    void prepare(bool write);

    Design &m_design;
    QString m_directory;
    quint64 m_revision = 0;                    ///< of the design that was read
    std::optional<GenerationInput> m_input;    ///< until the generator takes it
    std::optional<quint64> m_inputFingerprint; ///< of what was read
    enum class Standing { Unknown, Unsettled, Settled } m_standing = Standing::Unknown;
    std::unique_ptr<GenerateCode_ALL> m_generator;
    GenerationRecord m_record;
};

/// A generation in one run.
GenerationRecord generateCode(Design &design, const QString &directory, bool write);

} // namespace ChipLoom
