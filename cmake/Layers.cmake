# The layers of the house. No target is needed here, so that a script can ask too.

# What each room may use, beside the rooms that those use in turn. The order of the rooms is the order of the layers.
# Translations and Pictures are the resource libraries of resources/, CodeTemplates is that of data/.
set(CHIPLOOM_ROOMS Base Model ClockConfig Design Middlewares FreeRTOS_Config RTThread_Nano_Config GenerateCode
    Packages Project Reports Gui Cli)
set(CHIPLOOM_MAY_USE_Base Qt5::Core)
set(CHIPLOOM_MAY_USE_Model Base Qt5::Core Qt5::Xml)
set(CHIPLOOM_MAY_USE_ClockConfig Model Qt5::Core)
set(CHIPLOOM_MAY_USE_Design ClockConfig Qt5::Core)
set(CHIPLOOM_MAY_USE_Middlewares Design Qt5::Core)
set(CHIPLOOM_MAY_USE_FreeRTOS_Config Design Qt5::Core)
set(CHIPLOOM_MAY_USE_RTThread_Nano_Config Design Qt5::Core)
set(CHIPLOOM_MAY_USE_GenerateCode Design Middlewares FreeRTOS_Config RTThread_Nano_Config CodeTemplates
    Qt5::Core)
set(CHIPLOOM_MAY_USE_Packages Model Qt5::Core Qt5::Network)
set(CHIPLOOM_MAY_USE_Project GenerateCode Packages Qt5::Core Qt5::Xml)
set(CHIPLOOM_MAY_USE_Reports Project Qt5::Core Qt5::Gui)
set(CHIPLOOM_MAY_USE_Gui Base Model ClockConfig Design Middlewares FreeRTOS_Config RTThread_Nano_Config GenerateCode
    Packages Project Reports Translations Pictures Qt5::Core Qt5::Gui Qt5::Widgets Qt5::Svg Qt5::Network)
set(CHIPLOOM_MAY_USE_Cli Base Model ClockConfig Design Middlewares FreeRTOS_Config RTThread_Nano_Config GenerateCode
    Packages Project Reports Translations Qt5::Core)

# All rooms and Qt modules that a room may use, with what those rooms may use in turn.
function(chiploom_reachable room result)
    set(reached)
    set(open ${CHIPLOOM_MAY_USE_${room}})
    while(open)
        list(POP_FRONT open next)
        if(NOT next IN_LIST reached)
            list(APPEND reached ${next})
            list(APPEND open ${CHIPLOOM_MAY_USE_${next}})
        endif()
    endwhile()
    set(${result} ${reached} PARENT_SCOPE)
endfunction()

# Stops when a room uses what the table does not allow, directly or through the rooms that it allows.
function(chiploom_check_uses room)
    chiploom_reachable(${room} allowed)
    foreach(dependency IN LISTS ARGN)
        if(NOT dependency IN_LIST allowed AND NOT dependency STREQUAL ChipLoomFlags)
            message(FATAL_ERROR "${room} may not use ${dependency}; it may use: ${allowed} (cmake/Layers.cmake)")
        endif()
    endforeach()
endfunction()
