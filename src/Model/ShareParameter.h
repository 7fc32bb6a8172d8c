#pragma once

#include "Model/Enumerations.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace ChipLoom {

// The records in which all rooms speak: plain values that own nothing but their texts and lists.
//
// A text that the user sees stands three times: `X_EN` and `X_CH` as the database has them, and `X`, the text of the
// language that was current when the record was built.

// ---- Generic tree of a peripheral file ----

struct XMLAttributeInfo
{
    QString attributeName;
    QString attributeValue; ///< untouched

    bool operator==(const XMLAttributeInfo &) const = default;
};

struct XMLElementInfo
{
    QString tagName;
    QString tagText; ///< only of an element without attributes whose one child is text; otherwise empty
    QList<XMLAttributeInfo> attributeInfoList; ///< in document order
    QList<XMLElementInfo> subElementInfoList;  ///< in document order
};

// ---- Texts with two languages ----

/// Remark shown beside a mode or parameter.
struct Annotation
{
    QString Note, Note_EN, Note_CH;
};

struct Condition
{
    QString Diagnostic, Diagnostic_EN, Diagnostic_CH; ///< message when the condition fails
    QString Expression;                               ///< logical expression over modes and parameters
    bool AndFlag = true;                              ///< how this condition joins the surrounding ones
};

// ---- Parameters ----

struct PossibleValue
{
    QString Comment, Comment_EN, Comment_CH; ///< label of the value
    QString Value;                           ///< what is stored and generated
    QString Semaphore;                       ///< token that this choice raises; `$IpInstance` already replaced
    QString Action;                          ///< action word for the parameter engine
    Condition ValueCondition;                ///< when the value is offered
    bool ErrorFlag = false;                  ///< choosing the value is an error
};

struct RefParameter
{
    // What a generation reads of every parameter stands in one line of the processor's cache.
    QString Name;         ///< key, unique within a peripheral file
    QString CurrentValue; ///< the user's value
    QString Comment_EN;
    QString BaseMode; ///< mode under which the parameter was found, where the caller gives one
    QString Comment, Comment_CH;
    QString Group, Group_EN, Group_CH;
    QString TabName, TabName_EN, TabName_CH;
    QString Type; ///< "hexadecimal", "integer" and "signedinteger" (any case) set the number base
    QString DefaultValue;
    QString DefaultValueBackup; ///< as read, so that a changed default can be restored
    CURRENTVALUETYPE CurrentValueType = CURRENTVALUETYPE_NONE;
    QString Unit;
    QString MaxValue, MinValue; ///< bounds as text, empty for none
    QString Mode;               ///< mode to which the parameter belongs
    bool Visible = true;
    bool Enable = true;
    bool ReloadFlag = true;
    bool RelevantFlag = false;
    Condition condition; ///< when the parameter applies
    Annotation annotation;
    QList<PossibleValue> PossibleValueList; ///< empty for free entry
    QString Description;                    ///< long help text
    bool ManualModifyFlag = false;          ///< the user changed the value by hand
};

struct ParamCurrentValueType
{
    QString ParamName;
    CURRENTVALUETYPE CurrentValueType = CURRENTVALUETYPE_NONE;
};

struct ParameterTabName
{
    QString TabNameValue; ///< in the current language
    QString TabName, TabName_EN, TabName_CH;
};

// ---- Modes ----

/// A parameter that a `RefMode` restricts, with the values that it allows.
struct Parameter
{
    QString Name;
    QStringList PossibleValueList;
};

struct RefMode
{
    QString Name, Comment;
    QString Group, Group_EN, Group_CH;
    QString BaseMode; ///< the mode from which this one derives
    QString HalMode;  ///< the driver's name of the mode
    bool Abstract = false;
    QStringList ConfigForMode; ///< modes for which this one supplies configuration
    QList<Parameter> ParamList;
};

struct ModeSignal
{
    bool canbeUsedFlag = false; ///< the signal can be placed in the present design
    QString signalName;         ///< full, with the instance before it
    QString signalIOMode;
    bool Virtual = false; ///< logical, occupies no pin
};

/// One choice in the combo box of a mode.
struct ModeParamCofiguration
{
    QString modeParamName;
    QString modeParamUserName, modeParamUserName_EN, modeParamUserName_CH;
    QString modeParamRemoveCondition; ///< series, devices and instances from which the choice is withdrawn
    QString modeParamSignalLogicOp;
    QList<ModeSignal> modeParamSignalsList;
    Condition modeParamCondition;
    QStringList modeParamSemaphoreList;
};

struct ModeCofiguration
{
    QString modeName;
    QString modeUserName, modeUserName_EN, modeUserName_CH;
    QString modeRemoveCondition;
    QString modeLogicOperator;
    Condition modeCondition;
    Annotation modeAnnotation;
    QStringList modeSemaphoreList;
    QList<ModeParamCofiguration> modeParam;
};

/// The selected choice of one mode, as handed to the parameter engine.
struct IP_MODE_Struct
{
    QString modeName, currentModeParamName;
};

// ---- Catalogue ----

/// A name that other records refer to, as it is shown: in Chinese where a title is given, else as it is.
inline QString shownName(const QString &name, const QString &chineseTitle)
{
    return GlobalLanguage::g_CurrentLanguage == UI_CH && !chineseTitle.isEmpty() ? chineseTitle : name;
}

struct MCUDeviceStruct
{
    QString DeviceName;
    QString DevicePackage;                          ///< as "LQFP48"
    QString DeviceFlash, DeviceSRAM, DeviceMaxSRAM; ///< as written in the list, "64KB"
    QString DeviceCore, DeviceFrequency, DeviceGPIOs;
};

struct MCUSerialStruct
{
    QString ProductLinelInfo; ///< name of the product line
    QString SeriaName;        ///< as "ZV32F421"
    QString SerialInfo, SerialInfo_EN, SerialInfo_CH;
    QList<MCUDeviceStruct> MCUDeviceList;
};

struct ProductLineStruct
{
    QString ProductLineName;
    QString ProductLineName_CH; ///< its title in Chinese; may be empty
    QString ProductLinelInfo, ProductLinelInfo_EN, ProductLinelInfo_CH;
    QList<MCUSerialStruct> MCUSerialList;
};

struct PeripheralsBaseInfo
{
    QString InstanceName; ///< as "USART1"
    QString Name;         ///< family of its peripheral file, as "USART"
    QString GroupName;    ///< category in the module tree
    QString GroupName_CH; ///< its title in Chinese; may be empty
    QString VersionFile;  ///< version of the description; part of its file name
    QString configFile;
    QString AboutInfo, AboutInfo_EN, AboutInfo_CH;
};

// ---- Pins ----

/// A signal that must travel with another one.
struct BoundSignal
{
    int pinNum = 0;
    QString signalName;
};

struct PinSignalStruct
{
    PINCONFIG_TYPE configStatus = Not_Config;
    QString signalName;
    QString signalIOMode;
    QString signalUserLabel;
    QString signalInPinName; ///< pin name in which the signal lives
    QList<BoundSignal> pinSignalsBoundList;
    bool pinSignalMultiUseFlag = false;
    bool pinSignalMultiUseFlagBackup = false; ///< the database's value of the flag
    QStringList occupySignalsList;            ///< signals that this one blocks
    bool signalOtherIPOccupy = false;         ///< a peripheral other than the owner holds the pin
};

struct MCUPinsBaseInfo
{
    int pinNumber = 0;
    QString pinNumberStr;   ///< as written in the database: "12", "A1"
    QString pinName;        ///< alternatives separated by "/"
    bool fixedFlag = false; ///< power or another pin that cannot be assigned
    QString remarks, remarks_EN, remarks_CH;
    QString Variant;       ///< "PINREMAP", "PINREMAP1", "NOPINREMAP" or empty
    bool validFlag = true; ///< this variant is the bonded one
    QString pinType;
    QString GPIOStructure;
    QList<PinSignalStruct> pinSignalsList;
};

struct IPSignal
{
    QString signalName, signalInPinName;
    int signalInPinNum = 0;
    bool TMRIPCanUseFlag = true; ///< a timer output may share the pin while this group is selected
};

/// Signals that one remap value moves together.
struct IPSignalGroupInfo
{
    QString IPName;
    int GroupNum = 0;
    QString GMUX; ///< multiplex value that selects the group
    QList<IPSignal> signalGroup;
};

/// A signal's placement as handed to the GPIO list.
struct ModeIPValidSignal
{
    int signalInPinNum = 0;
    QString signalInPinName, InPinName, signalName, signalIOMode, signalUserLabel;
};

struct SignalsGPIOSetting
{
    int signalInPinNum = 0;
    QString signalInPinName, InPinName, signalName, signalIOMode;
    QString signalUserLabel, signalUserLabel_EXT;
    bool validFlag = false;
    QList<RefParameter> signalPinGPIOInfoList;
    bool sortFlag = false;
};

struct GPIO_PinSignal_Mux_Info
{
    QString SignalName, GPIO_Mux_x;
};

/// The macro names that code generation writes for a pin.
struct GPIO_Pin_Define_Info
{
    QString Name, PortName;
    QString GPIO_x, GPIO_Pin_x, GPIO_PinSource_x, EXINT_LINE_x, SCFG_GPIO_x, SCFG_PINS_SOURCE_x;
    QList<GPIO_PinSignal_Mux_Info> pinSignalMuxInfoList;
};

/// A device file as a whole. A number that is missing or malformed is 0.
struct MCUDeviceFile
{
    QString MCUName;
    QString Package; ///< family of the package, as "LQFP"; the catalogue has "LQFP48"
    int PinNums = 0;
    int xPinNum = 0, yPinNum = 0; ///< pins along the sides; columns of a grid
    quint32 PID = 0;
    QList<MCUPinsBaseInfo> PinsList;
    QList<IPSignalGroupInfo> PinsSignalsGroup;
    QList<PeripheralsBaseInfo> PeripheralsList;
    QList<PeripheralsBaseInfo> MiddlewaresList;
};

// ---- Interrupts ----

struct MCUNVICSetting
{
    QString NVICName, NVICName_EN, NVICName_CH;
    QString Diagnostic, Diagnostic_EN, Diagnostic_CH;
    QString ValueName; ///< name of the IRQ enumerator
    QString HandlerName;
    QStringList relatedIPNameList;
    bool canBeSet = false;
    bool core_IRQFlag = false;
    bool enabled_CanBeSet = false;
    bool enabledFlag = false;
    bool preemptionPriority_CanBeSet = false;
    int preemptionPriority_MaxValue = 0;
    int preemptionPriority_MinValue = 0;
    int preemptionPriority_Default_Value = 0;
    int preemptionPriority_Value = 0;
    bool subPriority_CanBeSet = false;
    int subPriority_MaxValue = 0;
    int subPriority_MinValue = 0;
    int subPriority_Default_Value = 0;
    int subPriority_Value = 0;
    bool FREERTOS_Func_canBeSet = false;
    bool FREERTOS_Func_enabledFlag = false;
    bool FREERTOS_Func_enabledFlag_ManualCancel = false;
    bool IRQHandler_Generate_canBeSet = false;
    bool IRQHandler_Generate_enabledFlag = false;
};

// ---- DMA ----

struct DMAChannelCondition
{
    QString channelName, condition;
};

struct DMA_Request_Condition
{
    QString requestName, condition;
};

struct DMAParamInfo
{
    QString InfoName, InfoComment, DefaultValue;
    QStringList ValueDisplayList, ValueList;
};

struct DMARequest
{
    QString requestName, InstanceName;
    int DMAType = 0;
    QString DMAHandle, channelName, channelNameValue;
    DMARequest_TYPE configStatus = Request_Not;
    QList<DMAChannelCondition> instanceCondition;
    QList<DMAParamInfo> DMAParamInfoList;
    QList<RefParameter> RefParameterfoList;
};

struct DMAModeSignal
{
    QString signalName, condition;
    QStringList instanceSemaphoreList;
};

struct DMAInstanceCofiguration
{
    QString instanceName, instanceLogicOp;
    QList<DMAModeSignal> modeSignal;
};

struct DMAModeCofiguration
{
    QString modeName, modeLogicOperator;
    QList<DMAInstanceCofiguration> modeParam;
};

struct DMA_Channel_Info
{
    QString channelComment, channelValue;
    ChannelUseType channelUseType = channelUseType_Not;
    QList<DMA_Request_Condition> DMARequestNameList;
};

struct DMA_INFO
{
    QString instanceName;
    XMLElementInfo m_DMAXMLFileInfo;
    QList<DMARequest *> m_AllDMARequestList;
    QList<DMA_Channel_Info *> m_ChannelInfoList;
    QList<DMAModeCofiguration> m_DMAModeConfigList;
    int m_nDMA1ChannelCount = 0;
    int m_nDMA2ChannelCount = 0;
};

// ---- Generation, projects, design files ----

struct MainFuncNameForRank
{
    int RankNum = 0;
    QString FuncName, InstanceName;
    bool FixPosFlag = false;
    bool MainDoNotCallFlag = false;
    QString CodeSection;
};

struct MiddlewaresCopyFile
{
    QString SrcDir, FileName, DestDIr, DestFileName;
};

struct PojectFile
{
    QString FileName, FilePath;
};

struct MiddlewaresPojectFiles
{
    QString GroupName;
    QList<PojectFile> PojectFileList;
};

struct FreeRTOSParamHeadUsage
{
    QString paramName;
    int heapUsedNum = 0;
};

/// One column of the middleware's table editors.
struct TableHeadStruct
{
    QString HeadParamName;
    QString HeadName, HeadName_CH, HeadName_EN;
    QString Diagnostic, Diagnostic_EN, Diagnostic_CH;
};

/// One pin of a saved design, as listed when a design is inspected.
struct ProjectFilePinInfo
{
    QString pinname, signalname, signaltype;
};

/// One entry of the list of recent designs.
struct ProjectFileSaveInfo
{
    QString filePath, creatTime;
};

struct UserGuideInfo
{
    QString ID, Title_ZH, Title_EN, Description_ZH, Description_EN, URL_ZH, URL_EN;
    QString Supported_MCUs_ZH, Supported_MCUs_EN, Version;
};

// ---- Comparisons ----

/// True if the trimmed names are equal, or if any of the alternatives ("/") in the first blank-separated piece of one
/// equals any of the other's: "PD0/HEXT_IN" is the same pin as "PD0".
bool IsPinNameSame(const QString &a, const QString &b);

/// True if the trimmed names are equal or share a piece between ";".
bool IsSignalSame(const QString &a, const QString &b);

/// `Value` of the last entry whose `Comment` (in the language of the list) equals the text, or an empty string.
QString GetValueByComment(const QList<PossibleValue> &list, const QString &comment);

/// `Comment` of the last entry whose `Value` equals the text, or an empty string.
QString GetCommentByValue(const QList<PossibleValue> &list, const QString &value);

} // namespace ChipLoom
