#pragma once

#include "Base/Beside.h"
#include "GenerateCode/Generatecode_DMA.h"
#include "GenerateCode/Generatecode_GPIO.h"
#include "GenerateCode/Generatecode_SYSTEM.h"
#include "GenerateCode/GenerationInput.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "GenerateCode/SectionedText.h"
#include "GenerateCode/SeriesPlan.h"
#include "GenerateCode/SourceTree.h"

#include <memory>
#include <optional>
#include <vector>

namespace ChipLoom {

class ClockCode;

/// What came of one generation.
struct GenerationRecord
{
    bool ok = false;
    QString error; ///< for a person: what stopped it, and where; empty if `ok`
    QVector<GeneratedFileRecord> files;
};

/// What a person should know of one file: the user's blocks that are not carried over, or not as they were, and what
/// has no effect.
QStringList remarksOn(const GeneratedFileRecord &file);

/// The generator of a series: writes the common files and asks the peripherals' generators for their parts. One class
/// for all groups; what a group has stands in its row. Lives through one generation; works on its own copy of the
/// design's lists, asks nobody and shows nothing, so it may run on any thread.
class GenerateCode_ALL
{
public:
    GenerateCode_ALL(const SeriesPlan &plan, GenerationInput input);
    ~GenerateCode_ALL();

    /// The generator of a series, or null where it has none.
    static std::unique_ptr<GenerateCode_ALL> Get_GenerateCode_All(GenerationInput input);

    /// Writes all files below a project directory.
    bool GenerateCode(const QString &directory) { return generate(directory, true).ok; }
    /// The same with an account of it; without `write` only the account. What was made for an account is what the next
    /// call writes, unless a file that it would replace has changed in between.
    GenerationRecord generate(const QString &directory, bool write);
    /// The tree of the next generation, which has begun to write.
    void setTree(std::unique_ptr<SourceTree> tree) { m_begunTree = std::move(tree); }

    // ---- Lists for the builder of projects; file names without extension, in a fixed order ----

    /// Generated files that this configuration does not have, as "lm_usart.c".
    QStringList GenerateCode_Get_Delete_ProjectFilesList() const;
    QStringList GenerateCode_Get_Valid_IP_FileNameList() const;
    QStringList GenerateCode_Get_All_IP_FileNameList() const;
    QStringList GenerateCode_Get_Valid_Mid_NameList() const;
    // What middlewares bring along. None of them has a generator yet, and a design that uses one is refused.
    QList<MiddlewaresCopyFile> GenerateCode_Get_Valid_Mid_FileNameList() const { return {}; }
    QList<MiddlewaresPojectFiles> GenerateCode_Get_Valid_Mid_ProjectFilesList() const { return {}; }
    QStringList Get_Valid_ProjectIncludePathList() const { return {}; }
    QStringList Get_Delete_ProjectIncludePathList() const { return {}; }
    /// Whether any peripheral needs its clock.
    bool Periph_clock_Is_Enable() const;

    /// The calls of `main`: those in use, in the order that the design has for them. Found when it is first asked for.
    const QList<MainFuncNameForRank> &functionRank() const;
    /// Peripherals and middlewares in use whose code cannot be generated yet.
    QStringList withoutGenerator() const;

private:
    GenerationRecord make(const QString &directory, bool write);

    // The files. The account has them in the order of these, the configuration source first.
    bool generateFiles();
    bool generateOtherFiles();
    bool GenerateCode_lm_config_h();
    bool GenerateCode_main_c();
    bool GenerateCode_conf_h();
    bool GenerateCode_File_Deliver(const QString &name, const QString &path);
    bool GenerateCode_SYSTEM_Files();
    bool GenerateCode_int_h();
    bool GenerateCode_int_c();
    bool Generate_CMake_Makefile_file(const QString &name);

    // Parts of them.
    using InstanceEdit = bool (DeclaredGenerator::*)(SectionedText &, const SectionedText::Spot &);
    static bool GenerateCode_Instance(SectionedText &text, const SectionedText::Spot &section,
                                      DeclaredGenerator *generator, InstanceEdit edit);
    static constexpr size_t FunctionShares = 4;
    struct FunctionShare
    {
        SectionedText text; ///< the configuration source with the functions of some instances
        QString outOfStep;  ///< an instance that does not find its places in the text, or empty
        std::shared_ptr<const Beside::Piece> piece;
    };
    void writeFunctions(size_t first, FunctionShare &share) const;
    bool GenerateCode_lm_config_c(SectionedText &text);
    bool GenerateCode_All_Instance(SectionedText &text, InstanceEdit edit);
    bool GenerateCode_All_Instance_interrupt_int_c(SectionedText &text, const std::vector<SectionedText::Spots> &spots);
    QStringList sectionsOfGroup(const QString &group) const;
    bool GenerateCode_Per_Instance(SectionedText &text, bool header);
    bool writeSplitFile(const QString &group, bool header, const std::string &pieces);
    bool GeneralCode_periph_clock_lm_config_c(SectionedText &text) const;
    bool GeneralCode_NVIC_config_lm_config_c(SectionedText &text) const;
    bool GeneralCode_NVIC_config_sub_lm_config_c(const TextCut &body, std::string &text) const;
    bool GeneralCode_GPIO_UserLabel_lm_config_h(std::string &text) const;
    bool GeneralCode_FuncCallRank_main_c(SectionedText &text);
    bool GeneralCode_rtthread_sections(SectionedText &text, const QStringList &names) const;
    bool GenerateCode_Module_Define_conf_h(const TextCut &header, std::string &text) const;

    // Questions to the design.
    bool IP_Is_Valid(const QString &name) const;
    const GenerationPeripheral *peripheral(const QString &name) const;
    bool anyValid(const QStringList &names) const;
    bool anyKindValid(const QString &kind) const;
    bool DMA_Is_Valid(const QString &channelName) const;
    bool dmaControllerInUse(const QString &controller) const;
    quint32 portsInUse() const;
    bool GPIO_x_Used(const QString &port) const;
    bool TimeBase_TMRn_Used(const QString &name) const;
    bool TimeBase_USARTn_Used(const QString &name) const;
    bool debugHasCode() const;
    bool clockIsNeeded(const SeriesPlan::Clock &clock) const;
    bool moduleIsNeeded(const QString &module) const;
    bool groupHasCode(const QString &group) const;
    bool needsSystemFiles() const;
    QString printfOfSystem() const;
    QString printfOfPeripheral() const;
    /// The ports that were to serve printf too, which has one output; they do not any more.
    QStringList leavePrintfToOnePort();
    QStringList Get_IP_GroupName_List() const;
    /// The functions and instances in use, as the order of calls is filtered by them.
    QStringList GenerateCode_Get_Valid_PeripheralsAndMid_NameList_ForRank() const;

    /// Of an instance of the series; null where the kind has none.
    std::unique_ptr<DeclaredGenerator> newGenerator(size_t instance) const;
    /// The same, made when it is first asked for.
    DeclaredGenerator *generatorOf(size_t instance) const;
    void feed(GenerateCode_IP &generator, const QString &instanceName) const;
    // These too.
    const GenerateCode_GPIO &gpioGenerator() const;
    const GenerateCode_SYSTEM &systemGenerator() const;
    /// Of the DMA and the EDMA, as the series has them.
    const std::vector<GenerateCode_DMA> &dmaGenerators() const;
    bool editDma(SectionedText &text, bool (GenerateCode_DMA::*edit)(SectionedText &) const) const;
    const SectionedText *readTemplate(const QString &name);
    bool failAt(const QString &what);
    QString chipFile(const char *suffix) const;

    const SeriesPlan &m_plan;
    GenerationInput m_input;
    QStringList m_portsWithoutPrintf;
    NameTable m_modules;            ///< peripherals and, behind them, middlewares by their name
    quint32 m_ports = 0;            ///< that have a pin in use: bit 0 for A
    std::vector<bool> m_clockNeeds; ///< by line of the clock function
    DesignLists m_lists;            ///< of the input
    mutable std::vector<std::unique_ptr<DeclaredGenerator>> m_generators; ///< by instance of the series
    mutable std::vector<GenerateCode_DMA> m_dma;
    mutable std::optional<GenerateCode_GPIO> m_gpio;
    mutable std::optional<GenerateCode_SYSTEM> m_system;
    mutable std::optional<QList<MainFuncNameForRank>> m_rank;

    // During a generation; the tree until it is written.
    GenerationRecord m_record;
    Beside m_beside; ///< of the tree
    std::unique_ptr<SourceTree> m_begunTree;
    std::unique_ptr<SourceTree> m_tree;
    std::unique_ptr<ClockCode> m_clock;
    QStringList m_splitGroups; ///< groups with files of their own
    QString m_error;           ///< where text and generator are out of step
};

/// Derives the unique label of each pin from the user's: the first holder keeps it, others get port and number behind.
void HandleSignalsGPIOUserLabel(std::vector<SignalsGPIOSetting> &settings,
                                const QList<GPIO_Pin_Define_Info *> &defines);

/// A name as part of a C name and of a file name: letters and digits in lower case, "_" for anything else.
QString codeName(const QString &name);

} // namespace ChipLoom
