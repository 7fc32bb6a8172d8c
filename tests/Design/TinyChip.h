#pragma once

#include "Design/Design.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "ScriptedPrompt.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace ChipLoom::Test {

/// A device of any series with peripherals made up on the spot, in a database of its own.
///
/// Modes are written "Activated" for a check box and "Mode: A, B" for a box, joined by ";". A check box named
/// "X <- token" is open while the token is there, an entry "A -> token" raises one, an entry "A @ signal" has a
/// signal, which is virtual.
class TinyChip : public ::testing::Test
{
protected:
    struct Peripheral
    {
        QString instance, name, modes;
    };

    bool open(const QString &series, const QList<Peripheral> &peripherals, const QString &family = "LQFP",
              int pins = 64, const QString &device = "TINY")
    {
        const QString folder = m_dir.filePath("ZV32DB/device/" + series);
        QDir().mkpath(folder + "/Peripherals");
        QByteArray list;
        for (const Peripheral &peripheral : peripherals) {
            list += QString("<I InstanceName=\"%1\" Name=\"%2\" Version=\"V1\"/>")
                        .arg(peripheral.instance, peripheral.name)
                        .toUtf8();
            write(folder + "/Peripherals/" + peripheral.name + "-V1.xml", description(peripheral.modes));
        }
        QByteArray table;
        for (int number = 1; number <= pins; ++number) {
            const QString name = QString("P%1%2").arg(QChar('A' + (number - 1) / 16)).arg((number - 1) % 16);
            table += QString("<P PinNum=\"%1\" PinName=\"%2\"><F Func=\"EXINT%3\"/></P>")
                         .arg(QString::number(number), name, QString::number((number - 1) % 16))
                         .toUtf8();
        }
        write(folder + '/' + device + ".xml",
              QString("<C><E term=\"MCUBaseInfo\"><I MCUName=\"%1\" Package=\"%2\" PinNums=\"%3\" xPinNum=\"%4\" "
                      "yPinNum=\"%5\" PID=\"1\"/></E><E term=\"PinsList\">")
                      .arg(device, family, QString::number(pins), "0", QString::number(pins / 2))
                      .toUtf8() +
                  table + "</E><E term=\"PeripheralsList\">" + list + "</E></C>");
        return m_design.NewDesign(series, device, family + QString::number(pins));
    }

    bool open(const QString &series, const Peripheral &peripheral)
    {
        return open(series, QList<Peripheral>{peripheral});
    }

    /// Makes choices in the first peripheral: "Activated" ticks, "Mode=A" chooses.
    void choose(const QString &choices)
    {
        for (const QString &choice : choices.split(';', Qt::SkipEmptyParts)) {
            const bool box = choice.contains('=');
            const DesignAnswer answer =
                ip().chooseItem(choice.section('=', 0, 0).trimmed(), box ? choice.section('=', 1).trimmed() : "TRUE");
            EXPECT_TRUE(answer) << choice.toStdString();
        }
    }

    IP_ModeAndConfiguration &ip() { return *m_design.peripheral(m_design.peripherals().first().InstanceName); }

    QTemporaryDir m_dir;
    ScriptedPrompt m_prompt{0};
    Design m_design{AppPaths(m_dir.path(), m_dir.path()), m_prompt};

private:
    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
        file.write(content);
    }

    static QString entry(const QString &text, QString &signalTable)
    {
        const QString name = text.section("->", 0, 0).section('@', 0, 0).trimmed();
        const QString token = text.section("->", 1).trimmed();
        const QString signal = text.section('@', 1).trimmed();
        QString xml = QString("<ModeParam Name=\"%1\">").arg(name);
        if (!signal.isEmpty()) {
            xml += QString("<SignalLogicalOp Name=\"AND\"><Signal Name=\"%1\"/></SignalLogicalOp>").arg(signal);
            signalTable += QString("<RefSignal Name=\"%1\" Virtual=\"true\"/>").arg(signal);
        }
        if (!token.isEmpty())
            xml += "<Semaphore>" + token + "</Semaphore>";
        return xml + "</ModeParam>";
    }

    static QByteArray description(const QString &modes)
    {
        QString signalTable;
        QString list;
        for (const QString &mode : modes.split(';', Qt::SkipEmptyParts)) {
            const bool box = mode.contains(':');
            const QString name = mode.section(box ? ':' : '@', 0, 0).section("<-", 0, 0).trimmed();
            const QString condition = box ? QString() : mode.section("<-", 1).trimmed();
            list += QString("<Mode Name=\"%1\">").arg(name);
            if (!condition.isEmpty())
                list += QString("<Condition Expression=\"%1\"/>").arg(condition);
            list += "<ModeLogicOperator Name=\"XOR\">";
            if (box) {
                for (const QString &item : mode.section(':', 1).split(','))
                    list += entry(item, signalTable);
            } else {
                list += entry(mode.section("<-", 0, 0), signalTable);
            }
            list += "</ModeLogicOperator></Mode>";
        }
        return ("<IP>" + signalTable + "<ModeLogicOperator Name=\"OR\">" + list + "</ModeLogicOperator></IP>").toUtf8();
    }
};

} // namespace ChipLoom::Test
