# Precompiled headers. They are large, so targets that are compiled in one way share one set, made by a library of its
# own. A set that does not fit a target's flags stops the build (-Winvalid-pch).

if(CHIPLOOM_CCACHE)
    set(CHIPLOOM_PCH_FLAGS -fpch-preprocess)
endif()

function(chiploom_precompiled_set name)
    cmake_parse_arguments(arg "" "" "HEADERS;LINKS;OPTIONS" ${ARGN})
    file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled/${name}.cpp CONTENT "")
    add_library(${name} OBJECT EXCLUDE_FROM_ALL ${CMAKE_BINARY_DIR}/precompiled/${name}.cpp)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${name} PRIVATE Qt5::Core ${arg_LINKS} ChipLoomFlags)
    target_compile_options(${name} PRIVATE ${arg_OPTIONS} ${CHIPLOOM_PCH_FLAGS})
    target_precompile_headers(${name} PRIVATE
        <QHash> <QList> <QMap> <QObject> <QString> <QStringList> <QVector> <algorithm> <array> <functional>
        <memory> <optional> <vector> ${arg_HEADERS})
endfunction()

chiploom_precompiled_set(PrecompiledRoom)
chiploom_precompiled_set(PrecompiledTest
    HEADERS <gmock/gmock.h> <gtest/gtest.h> LINKS GTest::gmock OPTIONS ${CHIPLOOM_TEST_FLAGS})
chiploom_precompiled_set(PrecompiledGuiRoom HEADERS <QtWidgets> LINKS Qt5::Widgets)
chiploom_precompiled_set(PrecompiledGuiTest
    HEADERS <QtWidgets> <gmock/gmock.h> <gtest/gtest.h> LINKS Qt5::Widgets GTest::gmock OPTIONS ${CHIPLOOM_TEST_FLAGS})

# chiploom_precompile(<target> Room|Test)
function(chiploom_precompile target kind)
    if(target MATCHES "^Gui")
        set(kind Gui${kind})
    endif()
    target_compile_options(${target} PRIVATE ${CHIPLOOM_PCH_FLAGS})
    target_precompile_headers(${target} REUSE_FROM Precompiled${kind})
endfunction()
