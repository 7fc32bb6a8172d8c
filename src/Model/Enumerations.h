#pragma once

namespace ChipLoom {

/// Series codes of the chips. The numbers are the chips' own and have gaps.
enum ZV32MCUSERIALS {
    ZV32F403 = 2,
    ZV32F413 = 4,
    ZV32F415 = 5,
    ZV32F403A = 7,
    ZV32F407 = 8,
    ZV32F421 = 9,
    ZV32F435 = 13,
    ZV32F437 = 14,
    ZV32F425 = 15,
    ZV32L021 = 16,
    ZV32WB415 = 17,
    ZV32F423 = 18,
    ZV32F405 = 19,
    ZV32F402 = 20,
    ZV32F455 = 21,
    ZV32F456 = 22,
    ZV32F457 = 23,
    ZV32A403A = 24,
    ZV32M412 = 25,
    ZV32M416 = 26,
    ZV32A423 = 29,
    ZV32F490 = 30,
    ZV32F422 = 33,
    ZV32F426 = 34,
    ZV32F403E = 35,
    ZV32F407E = 36,
    ZV32F011 = 37,
    ZV32F408 = 38,
    ZV32F406 = 39,
    ZV32C421 = 40, ///< a code without a name: the text helpers know no such series
    ZV32F6221 = 149,
    ZV32ErrorMCU1 = 255,
    ZV32ErrorMCU2 = 0
};

enum LANGUAGE { UI_EN = 0, UI_CH = 1 };

enum IDE_TYPE {
    IDE_ZV32_IDE = 0,
    IDE_ECLIPSE_GCC = 1,
    IDE_IAR_V6_10 = 2,
    IDE_IAR_V7_4 = 3,
    IDE_IAR_V8_2 = 4,
    IDE_IAR_V9_3 = 5,
    IDE_MDK_V4 = 6,
    IDE_MDK_V5 = 7,
    IDE_MAKEFILE = 8,
    IDE_CMAKE = 9
};

/// The Arm compiler generation chosen for Keil MDK projects.
enum ARM_AC_Set { ARM_AC_5 = 0, ARM_AC_6 = 1, ARM_AC_NotSet = 2 };

/// Status of a peripheral in the module tree: on or off, with 4 as the error bit.
enum IPSTATUS { IPSTATUS_OFF = 1, IPSTATUS_ON = 2, IPSTATUS_ERROR = 4, IPSTATUS_OFFERROR = 5, IPSTATUS_ONERROR = 6 };

enum IPPARAMSTATUS { IPPARAMSTATUS_NORMAL = 1, IPPARAMSTATUS_ERROR = 2 };

/// How a signal is assigned on a pin: a bit mask of "by hand" (1) and "by a peripheral's mode" (2).
enum PINCONFIG_TYPE { Not_Config = 0, Manual_Config = 1, IP_Config = 2, Manual_IP_Config = 3 };

/// How the numbers of a parameter are written.
enum CURRENTVALUETYPE { CURRENTVALUETYPE_NONE = 0, CURRENTVALUETYPE_DEC = 1, CURRENTVALUETYPE_HEX = 2 };

enum QTCONTROLSTATUS { CONTROLSTATUS_NORMAL = 0, CONTROLSTATUS_WARNING = 1, CONTROLSTATUS_ERROR = 2 };

/// The side of the package on which a pin stands.
enum PINDIRECTION { DIRECTION_LEFT = 0, DIRECTION_DOWN = 1, DIRECTION_RIGHT = 2, DIRECTION_UP = 3 };

enum PINVIEWROTATEPOINT {
    ROTATEPOINT_TOPLEFT = 0,
    ROTATEPOINT_TOPRIGHT = 1,
    ROTATEPOINT_CENTER = 2,
    ROTATEPOINT_BOTTOMLEFT = 3,
    ROTATEPOINT_BOTTOMRIGHT = 4
};

enum NVICSHOWMODDE { SHOW_AVAILABLE = 0, SHOW_ENABLED = 1, SHOW_ALL = 2 };

enum DMARequest_TYPE { Request_Not = 0, Request_Enable = 1, Request_Used = 2 };

enum ChannelUseType { channelUseType_Not = 0, channelUseType_MemToMem = 1, channelUseType_IP = 2 };

enum CAN_TYPE { CAN_TYPE_1 = 0, CAN_TYPE_Nominal = 1, CAN_TYPE_NominalData = 2 };

enum CALC_Type { CALC_Type_CAN = 0, CALC_Type_Nominal = 1, CALC_Type_Data = 2 };

/// The one language switch of the program.
class GlobalLanguage
{
public:
    static LANGUAGE g_CurrentLanguage;
};

} // namespace ChipLoom
