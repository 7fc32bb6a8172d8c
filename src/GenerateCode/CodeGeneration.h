#pragma once

#include "GenerateCode/Generatecode_ALL.h"

#include <QThread>

#include <functional>

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

/// Looks for what must not be generated, in this order, and tells the first of it through the design's prompt.
GenerationStop checkBeforeGeneration(Design &design);

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

/// Generates the code of a design into a project directory ("inc" and "src" below it), in a thread of its own, and
/// brings the design's order of calls up to date. Nothing deferred runs meanwhile; `whileWaiting` is called every 10
/// ms.
GenerationRecord generateCode(Design &design, const QString &directory, bool write,
                              const std::function<void()> &whileWaiting = {});

} // namespace ChipLoom
