#include "ProjectFacts.h"
#include "ToolchainFixture.h"

namespace ChipLoom::Test {

namespace {

/// What a user writes into a project file: behind `place` of `file`.
struct UserEdit
{
    const char *file, *place, *text;
};

struct UserRow
{
    IDE_TYPE type;
    std::vector<UserEdit> edits;
};

const UserRow UserRows[] = {
    {IDE_MDK_V5,
     {{"project/MDK_V5/Test.uvprojx", "<FilePath>..\\src\\main.c</FilePath>\n            </File>",
       "\n            <File><FileName>mine.c</FileName><FilePath>..\\src\\mine.c</FilePath></File>"},
      {"project/MDK_V5/Test.uvprojx", "zv32f421_misc.c</FilePath>\n            </File>",
       "\n            <File><FileName>zv32f421_crc.c</FileName>"
       "<FilePath>..\\..\\libraries\\drivers\\src\\zv32f421_crc.c</FilePath></File>"},
      {"project/MDK_V5/Test.uvprojx", "<Groups>",
       "\n        <Group><GroupName>my &amp; group</GroupName><Files/></Group>"},
      {"project/MDK_V5/Test.uvprojx", "USE_STDPERIPH_DRIVER", ", MINE=\"a b\""},
      {"project/MDK_V5/Test.uvprojx", "<IncludePath>..\\inc", ";C:\\my folder\\inc;..\\mine;..\\à"},
      {"project/MDK_V5/Test.uvoptx", "<Breakpoint/>", "<Bp><Number>0</Number></Bp>"}}},
    {IDE_IAR_V8_2,
     {{"project/IAR_V8.2/Test.ewp", "<name>$PROJ_DIR$\\..\\src\\main.c</name>\n        </file>",
       "\n        <file><name>$PROJ_DIR$\\mine.c</name></file>"},
      {"project/IAR_V8.2/Test.ewp", "zv32f421_misc.c</name>\n        </file>",
       "\n        <file><name>$PROJ_DIR$\\..\\..\\libraries\\drivers\\src\\zv32f421_crc.c</name></file>"},
      {"project/IAR_V8.2/Test.ewp", "<state>USE_STDPERIPH_DRIVER</state>", "<state>MINE=1</state>"},
      {"project/IAR_V8.2/Test.ewp", "<state>$PROJ_DIR$\\..\\inc</state>", "<state>$TOOLKIT_DIR$\\inc</state>"},
      {"project/IAR_V8.2/Test.ewd", "<name>MacFile</name>", "<!-- mine -->"},
      {"project/IAR_V8.2/Test.eww", "<batchBuild />", "<!-- mine -->"}}},
    {IDE_ECLIPSE_GCC,
     {{"project/Eclipse_gcc/.project", "<linkedResources>",
       "\n<link><name>user/mine.c</name><type>1</type><locationURI>PARENT-1-PROJECT_LOC/src/mine.c</locationURI></link>"
       "<link><name>firmware/zv32f421_crc.c</name><type>1</type>"
       "<locationURI>PARENT-2-PROJECT_LOC/libraries/drivers/src/zv32f421_crc.c</locationURI></link>"
       "<link><name>other</name><type>2</type><locationURI>file:/other</locationURI></link>"},
      {"project/Eclipse_gcc/.project", "<linkedResources>",
       "\n<link><name>user/a.c</name><type>1</type><location>/opt/a.c</location></link>"
       "<link><name>user/b.c</name><type>1</type><location>/opt/b.c</location></link>"},
      {"project/Eclipse_gcc/.cproject", "value=\"USE_STDPERIPH_DRIVER\"/>",
       "<listOptionValue builtIn=\"false\" value=\"MINE=&quot;x&quot;\"/>"},
      {"project/Eclipse_gcc/.cproject", "value=\"&quot;../../inc&quot;\"/>",
       "<listOptionValue builtIn=\"false\" value=\"/opt/mine\"/>"}}},
    {IDE_ZV32_IDE, {{"project/ZV32_IDE/preferences.ini", "chipSizeType=flash", "\nmine=1"}}},
    {IDE_MAKEFILE,
     {{"Makefile", "project/src/zv32f421_int.c \\\n", "project/src/mine.c \\\n../shared/mine.c \\\n"},
      {"Makefile", "project/src/zv32f421_int.c \\\n", "libraries/drivers/src/zv32f421_crc.c \\\n"},
      {"Makefile", "project/src/zv32f421_int.c \\\n", "libraries/sensor/mine.c \\\nmiddlewares/mine/mine.c \\\n"},
      {"Makefile", "-Iproject/inc \\\n", "-Imine \\\n-Ilibraries/sensor/à \\\n"},
      {"Makefile", "-DUSE_STDPERIPH_DRIVER \\\n", "-DMINE=1 \\\n"},
      {"Makefile", "WARNINGS ?= -Wall", " -Wshadow"}}},
    {IDE_CMAKE,
     {{"CMakeLists.txt", "target_sources(${LM_Target} PRIVATE\n", "    mine.c\n"},
      {"cmake/zv32_chiploom/CMakeLists.txt", "set(LM_Application_Src\n",
       "    ${CMAKE_SOURCE_DIR}/project/src/mine.c\n"},
      {"cmake/zv32_chiploom/CMakeLists.txt", "set(ZV32_Drivers_Src\n",
       "    ${CMAKE_SOURCE_DIR}/libraries/drivers/src/zv32f421_crc.c\n"
       "    ${CMAKE_SOURCE_DIR}/project/src/other.c\n"},
      {"cmake/zv32_chiploom/CMakeLists.txt", "set(LM_Include_Dirs\n", "    ${CMAKE_SOURCE_DIR}/libraries/mine\n"},
      {"cmake/zv32_chiploom/CMakeLists.txt", "    USE_STDPERIPH_DRIVER\n", "    MINE=1\n"},
      {"cmake/zv32_chiploom/CMakeLists.txt", "set(LM_LINK_LIBS\n", "    m\n    ${CMAKE_SOURCE_DIR}/libraries/mine.a\n"},
      {"cmake/gcc-arm-none-eabi.cmake", "-Wall", " -Wshadow"},
      {"CMakePresets.json", "{\n", "  \"vendor\": {},\n"}}},
};

class UserEdits : public ToolchainFixture, public ::testing::WithParamInterface<UserRow>
{
};

/// The text without blanks, since a list may be written anew around what stays in it.
QByteArray squeezed(QByteArray text)
{
    return text.simplified().replace(" ", "").replace("\\", "");
}

} // namespace

TEST_P(UserEdits, StayThroughLaterGenerations)
{
    begin(GetParam().type);
    buildWell();
    for (const UserEdit &edit : GetParam().edits)
        replace(edit.file, edit.place, QByteArray(edit.place) + edit.text);
    useFreeRtos();
    order.validIPFileNameList.append("zv32f421_spi");
    buildWell();
    leaveFreeRtos();
    order.validIPFileNameList.removeOne("zv32f421_usart");
    buildWell();
    for (const UserEdit &edit : GetParam().edits) {
        for (const QByteArray &line : QByteArray(edit.text).split('\n'))
            EXPECT_TRUE(squeezed(bytes(edit.file)).contains(squeezed(line))) << edit.file << ": " << line.constData();
    }
    const ProjectFacts facts = readFacts(order);
    EXPECT_TRUE(facts.sources.filter("usart").isEmpty());
    EXPECT_FALSE(facts.sources.filter("spi").isEmpty());
    EXPECT_TRUE(facts.sources.filter("freertos").isEmpty());
    EXPECT_TRUE(build().written.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, UserEdits, ::testing::ValuesIn(UserRows), [](const auto &info) {
    return getIDEPathName(info.param.type).replace('.', '_').toStdString();
});

class ToolchainEditors : public ToolchainFixture
{
};

/// Stands for a run that was stopped before or behind the work of the toolchain's editor.
class StoppedEditor : public ToolchainEditor
{
public:
    StoppedEditor(const ToolchainEditor *editor, bool behind) : m_editor(editor), m_behind(behind) {}
    bool ConfigLinkerSettings(const ProjectOrder &, BuilderAccount &) const override { return true; }
    bool ConfigProjectFile(const ProjectOrder &order, bool first, BuilderAccount &account) const override
    {
        if (m_behind)
            m_editor->ConfigProjectFile(order, first, account);
        return false;
    }

private:
    const ToolchainEditor *m_editor;
    bool m_behind;
};

TEST_F(ToolchainEditors, AStoppedRunLeavesNoNameOfTheTemplate)
{
    for (const IDE_TYPE type : AllToolchains) {
        for (const bool behind : {false, true}) {
            order = {};
            begin(type);
            order.projectName = "My template";
            order.projectFullPath += QString::number(type) + (behind ? "b" : "a");
            const StoppedEditor editor(ToolchainEditor::of(type), behind);
            GenerateProjectThread builder(order);
            builder.setEditor(&editor);
            EXPECT_EQ(builder.build().code, 3);

            order.ideType = type == IDE_CMAKE ? IDE_MAKEFILE : IDE_CMAKE; // another form is made in between
            buildWell();
            order.ideType = type;
            buildWell();
            for (const QString &file : projectFiles()) {
                const QByteArray text = bytes(file).replace("My template", "");
                EXPECT_FALSE(text.contains("emplate") || text.contains("My My")) << file.toStdString();
            }
        }
    }
}

TEST_F(ToolchainEditors, OwnLinkerFilesAndMemoriesStay)
{
    begin(IDE_MAKEFILE);
    buildWell();
    replace("Makefile", order.linkerFile().toUtf8(), "project/my.ld");
    begin(IDE_IAR_V9_3);
    buildWell();
    replace("project/IAR_V9.3/Test.ewp", "$PROJ_DIR$\\ZV32F421x8.icf", "$PROJ_DIR$\\my.icf");
    begin(IDE_MDK_V5);
    buildWell();
    // A program behind a loader of 16 KB.
    replace("project/MDK_V5/Test.uvprojx",
            "<OCR_RVCT4>\n                <Type>1</Type>\n                <StartAddress>0x08000000</StartAddress>\n    "
            "            <Size>0x10000",
            "<OCR_RVCT4>\n                <Type>1</Type>\n                <StartAddress>0x08004000</StartAddress>\n    "
            "            <Size>0xC000");
    for (const IDE_TYPE type : {IDE_MAKEFILE, IDE_IAR_V9_3, IDE_MDK_V5}) {
        order.ideType = type;
        setDevice("ZV32F421K6T7", 32, 16);
        buildWell();
    }
    EXPECT_TRUE(bytes("Makefile").contains("LDSCRIPT = project/my.ld"));
    EXPECT_TRUE(bytes("project/IAR_V9.3/Test.ewp").contains("$PROJ_DIR$\\my.icf"));
    const QByteArray mdk = bytes("project/MDK_V5/Test.uvprojx");
    EXPECT_TRUE(mdk.contains("0x08004000</StartAddress>\n                <Size>0xC000<"));
    EXPECT_TRUE(mdk.contains("IROM(0x08000000,0x8000)"));
}

TEST_F(ToolchainEditors, WhatStandsBehindAListOfMakeIsNoneOfItsEntries)
{
    begin(IDE_MAKEFILE);
    buildWell();
    const QByteArray mine = "\nC_SOURCES += mine.c\n\nifdef MORE\nC_SOURCES += more.c\nendif\n\n";
    replace("Makefile", "\n# Assembly", mine + "# Assembly");
    replace("Makefile", "\n\n# Linker script", "\n\nC_DEFS += -DMINE\n\n# Linker script");
    useFreeRtos();
    buildWell();
    EXPECT_TRUE(bytes("Makefile").contains("project/src/freertos_app.c \\\n"));
    EXPECT_TRUE(bytes("Makefile").contains(" \\\n" + mine + "# Assembly")) << bytes("Makefile").constData();
    EXPECT_TRUE(bytes("Makefile").contains("-DARM_MATH_LOOPUNROLL\n\nC_DEFS += -DMINE\n\n# Linker"));
    EXPECT_TRUE(build().written.isEmpty());
}

TEST_F(ToolchainEditors, ALinkerScriptOfTheUsersOutlivesTheDevice)
{
    begin(IDE_MAKEFILE);
    buildWell();
    const QString former = order.linkerFile();
    put(former, bytes(former) + "/* mine */\n");
    order.minStackSize = 0x800;
    buildWell();
    setDevice("ZV32F421K6T7", 32, 16);
    const BuilderAccount account = build();
    EXPECT_EQ(account.code, 0) << account.detail.toStdString();
    EXPECT_EQ(account.notes.filter(former).size(), 1) << account.notes.join('\n').toStdString();
    EXPECT_TRUE(bytes(former + ".bak").endsWith("/* mine */\n"));
    setDevice("ZV32F421C8T7", 64, 16);
    buildWell();
    EXPECT_FALSE(QFile::exists(path("project/ldscripts/ZV32F421x6_FLASH.ld"))) << "nobody changed it";
}

TEST_F(ToolchainEditors, SizesWithLettersStayAndAreTold)
{
    for (const IDE_TYPE type : {IDE_MDK_V4, IDE_IAR_V7_4, IDE_CMAKE}) {
        begin(type);
        order.minHeapSize = 0x4A0;
        buildWell();
        EXPECT_EQ(readFacts(order).heap, 0x4A0u);
        const BuilderAccount same = build();
        EXPECT_EQ(same.notes, QStringList());
        order.minHeapSize = 0x600;
        order.minStackSize = 0x900;
        const BuilderAccount account = build();
        EXPECT_EQ(account.code, 0);
        ASSERT_EQ(account.notes.size(), 1);
        const QString file = order.isMdk() ? order.startupFile() : order.linkerFile();
        EXPECT_TRUE(account.notes[0].startsWith(file)) << account.notes[0].toStdString();
        EXPECT_TRUE(account.notes[0].contains("4A0")) << account.notes[0].toStdString();
        EXPECT_EQ(readFacts(order).heap, 0x4A0u);
        EXPECT_EQ(readFacts(order).stack, 0x900u);
        order.minHeapSize = 0x200;
        order.minStackSize = 0x400;
    }
}

TEST_F(ToolchainEditors, CompilerOfMdk)
{
    begin(IDE_MDK_V5);
    const auto values = [this] {
        QList<QByteArray> found;
        const QByteArray text = bytes("project/MDK_V5/Test.uvprojx");
        for (const QByteArray name : {"<uAC6>", "<wLevel>", "<v6Lang>"})
            found.append(text.mid(text.indexOf(name) + name.size(), 1));
        return found;
    };
    order.armCompiler = ARM_AC_6;
    buildWell();
    EXPECT_EQ(values(), (QList<QByteArray>{"1", "3", "3"}));
    order.armCompiler = ARM_AC_NotSet;
    buildWell();
    EXPECT_EQ(values(), (QList<QByteArray>{"1", "3", "3"}));
    order.armCompiler = ARM_AC_5;
    buildWell();
    EXPECT_EQ(values(), (QList<QByteArray>{"0", "2", "1"}));
}

TEST_F(ToolchainEditors, BrokenFilesStopTheBuildAndStay)
{
    const std::pair<IDE_TYPE, const char *> rows[] = {{IDE_MDK_V5, "project/MDK_V5/Test.uvprojx"},
                                                      {IDE_IAR_V8_2, "project/IAR_V8.2/Test.ewp"},
                                                      {IDE_ECLIPSE_GCC, "project/Eclipse_gcc/.cproject"}};
    for (const auto &[type, file] : rows) {
        begin(type);
        buildWell();
        const QByteArray broken = bytes(file).left(300);
        put(file, broken);
        const BuilderAccount account = build();
        EXPECT_EQ(account.code, 3);
        EXPECT_TRUE(account.detail.contains(QString(file).section('/', -1))) << account.detail.toStdString();
        EXPECT_EQ(bytes(file), broken);
        QFile::remove(path(file));
        EXPECT_EQ(build().code, 3);
    }
    // What a toolchain makes anew may be missing, as in a fresh copy of a repository.
    for (const auto &[type, file] : {std::pair(IDE_MDK_V4, "Test.uvopt"), std::pair(IDE_IAR_V9_3, "Test.ewd")}) {
        begin(type);
        buildWell();
        EXPECT_TRUE(QFile::remove(order.toolchainDir() + '/' + file)) << file;
        buildWell();
    }
    begin(IDE_MAKEFILE);
    buildWell();
    // A section that the user has taken over is left, and named.
    replace("Makefile", "C_SOURCES = \\\n", "C_SOURCES := $(wildcard project/src/*.c)\n");
    const BuilderAccount account = build();
    EXPECT_EQ(account.code, 0);
    ASSERT_EQ(account.notes.size(), 1);
    EXPECT_TRUE(account.notes[0].contains("C_SOURCES"));
    EXPECT_TRUE(bytes("Makefile").contains("$(wildcard project/src/*.c)"));
}

TEST_F(ToolchainEditors, FilesWithLineEndsOfWindowsKeepThem)
{
    for (const IDE_TYPE type : {IDE_MAKEFILE, IDE_MDK_V5}) {
        begin(type);
        buildWell();
        const QString file = mainFile();
        put(file, bytes(file).replace("\n", "\r\n"));
        useFreeRtos();
        buildWell();
        const QByteArray text = bytes(file);
        EXPECT_TRUE(text.contains("tasks.c"));
        EXPECT_EQ(text.count('\n'), text.count("\r\n"));
        leaveFreeRtos();
    }
}

} // namespace ChipLoom::Test
