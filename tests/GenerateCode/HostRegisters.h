#pragma once

#include "Design/IP_ModeAndConfiguration.h"
#include "GenerationFixture.h"

#include <QMap>
#include <QProcess>
#include <QSet>

#include <random>

namespace ChipLoom::Test {

/// Generates a design, runs functions of it with the drivers on the host, where registers are plain memory, and reads
/// what they left.
class HostRegisters : public GenerationFixture
{
protected:
    explicit HostRegisters(unsigned seed) : m_random(seed) {}

    int random(int from, int to) { return std::uniform_int_distribution<int>(from, to)(m_random); }

    QString numbered(const QString &instance, const QString &name, int from, int to)
    {
        return "param/" + instance + '/' + name + '=' + QString::number(random(from, to));
    }
    QString chosen(const QString &instance, const QString &name, const QStringList &values)
    {
        return "param/" + instance + '/' + name + '=' + values.at(random(0, values.size() - 1));
    }

    QString shown(const QString &instance, const QString &name) const
    {
        const RefParameter *parameter = design.peripheral(instance)->parameters().parameter(name);
        return parameter ? parameter->CurrentValue : QString();
    }
    int number(const QString &instance, const QString &name) const { return shown(instance, name).toInt(nullptr, 0); }
    bool isOn(const QString &instance, const QString &name) const { return shown(instance, name) == "TRUE"; }

    static QString run(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.start(program, arguments);
        if (!process.waitForStarted() || !process.waitForFinished(120000))
            return process.errorString();
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().left(4000).toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    /// Compiles the generated source with the drivers for the host and reads what `program` shows: lines of a name and
    /// a number. `folder` is that of the templates.
    void readRegisters(const QString &folderName, const char *program)
    {
        const QString packages = QStringLiteral(CHIPLOOM_BIN_DIR "/firmware/");
        const QString package =
            packages + QDir(packages).entryList({folderName + "_Firmware*"}).value(0) + "/libraries/";
        QFile file(path("src/show.c"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(program);
        file.close();
        QStringList arguments{"-w", "-O0", "-DUSE_STDPERIPH_DRIVER", "-I" + path("inc")};
        QSet<QString> folders;
        QDirIterator it(package, {"*.h", "*.c"}, QDir::Files, QDirIterator::Subdirectories);
        QStringList sources{path("src/show.c"), path("src/" + folderName.toLower() + "_lm_config.c")};
        while (it.hasNext()) {
            const QString name = it.next();
            if (name.endsWith(".c"))
                sources.append(name);
            else
                folders.insert("-I" + it.fileInfo().path());
        }
        run("gcc", arguments + folders.values() + sources + QStringList{"-o", folder.filePath("show")});
        for (const QString &line : run(folder.filePath("show"), {}).split('\n', Qt::SkipEmptyParts))
            m_registers[line.section(' ', 0, -2)] = line.section(' ', -1).toUInt();
    }

    /// A field of a register.
    int field(const QString &name, int shift, int bits) const
    {
        return static_cast<int>(m_registers.value(name) >> shift & ((1U << bits) - 1U));
    }

    std::mt19937 m_random;
    QMap<QString, unsigned> m_registers;
};

} // namespace ChipLoom::Test
