#pragma once

#include "Base/UserPrompt.h"
#include "Model/xmloperation.h"
#include "QtPrinters.h"
#include "ScriptedPrompt.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace ChipLoom {

/// A program folder of its own with a catalogue of two lines, three series and seven devices.
class HomeFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        GlobalLanguage::g_CurrentLanguage = UI_EN;
        write("ZV32DB/MCUList.xml", R"(<MCUs>
<e term="ProductLinesList"><e Line="Value Line" LineCH="经济型" InfoEN="small" InfoCH="小"/>
  <e Line="Main Line" InfoEN="large" InfoCH="大"/></e>
<e term="Value Line"><e Serial="ZV32F421" InfoEN="small" InfoCH="小"/></e>
<e term="Main Line"><e Serial="ZV32F403A" InfoEN="large" InfoCH="大"/><e Serial="ZV32F407" InfoEN="net" InfoCH="网"/></e>
<e term="ZV32F421">
  <e Name="ZV32F421F8P7" Package="TSSOP20" Flash="64KB" SRAM="16KB" Core="Cortex-M4" Frequency="120MHz" GPIO="15"/>
  <e Name="ZV32F421K6T7" Package="LQFP32" Flash="32KB" SRAM="8KB" Core="Cortex-M4" Frequency="120MHz" GPIO="27"/></e>
<e term="ZV32F403A">
  <e Name="ZV32F403AVGT7" Package="LQFP100" Flash="1024KB" SRAM="96KB" MaxSRAM="224KB" Core="Cortex-M4"
     Frequency="240MHz" GPIO="80"/>
  <e Name="ZV32F403ACGU7" Package="QFN48" Flash="1024KB" SRAM="96KB" MaxSRAM="224KB" Core="Cortex-M4"
     Frequency="240MHz" GPIO="37"/>
  <e Name="ZV32F403ACCT7" Package="LQFP48" Flash="256KB" SRAM="96KB" MaxSRAM="224KB" Core="Cortex-M4"
     Frequency="240MHz" GPIO="37"/>
  <e Name="ZV32F403AVGH7" Package="BGA100" Flash="1024KB" SRAM="96KB" MaxSRAM="224KB" Core="Cortex-M4"
     Frequency="240MHz" GPIO="80"/></e>
<e term="ZV32F407">
  <e Name="ZV32F407RGT7" Package="LQFP64" Flash="1024KB" SRAM="96KB" MaxSRAM="224KB" Core="Cortex-M4"
     Frequency="240MHz" GPIO="51"/></e>
</MCUs>)");
        for (const char *series : {"ZV32F421", "ZV32F403A"}) {
            const QString folder = QStringLiteral("ZV32DB/device/%1/%1_Info_").arg(QLatin1String(series));
            write(folder + "EN.htm", QByteArray("<html><body>About ") + series + "</body></html>");
            write(folder + "CH.htm", QByteArray("<html><body>关于 ") + series + "</body></html>");
        }
    }

    void write(const QString &name, const QByteArray &content)
    {
        const QString path = m_folder.filePath(name);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir m_folder;
    XMLOperation m_xml{AppPaths(m_folder.path(), m_folder.filePath("home"))};
    ScriptedPrompt m_prompt;
};

} // namespace ChipLoom
