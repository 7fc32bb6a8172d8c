# The house rules of the build: how a room, a test and a program are declared, and the one target that carries the
# compiler flags. Which room may use which stands in Layers.cmake.

option(CHIPLOOM_WITH_GUI "Build the windows; without them, all rooms below Gui and the command line program" ON)
option(CHIPLOOM_SANITIZE "Build with the address, leak and undefined-behaviour sanitizers" OFF)

set(CHIPLOOM_TEST_FLAGS -O0) # compiled far more often than run
add_library(ChipLoomFlags INTERFACE)
target_compile_options(ChipLoomFlags INTERFACE -Wall -Wextra -Werror)
target_compile_definitions(ChipLoomFlags INTERFACE
    QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050F00)
if(CHIPLOOM_SANITIZE)
    target_compile_options(ChipLoomFlags INTERFACE
        -O1 -g1 -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(ChipLoomFlags INTERFACE -fsanitize=address,undefined)
endif()

find_program(CHIPLOOM_CCACHE ccache)
if(CHIPLOOM_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CHIPLOOM_CCACHE})
endif()

include(Layers)
set(CHIPLOOM_BUILT_ROOMS ${CHIPLOOM_ROOMS})
if(NOT CHIPLOOM_WITH_GUI)
    list(REMOVE_ITEM CHIPLOOM_BUILT_ROOMS Gui)
endif()

# chiploom_library(<Room> SOURCES <files> DEPENDS <rooms and Qt modules>)
# One static library for a room of src/, with the alias ChipLoom::<Room>. A dependency that the table above does not
# allow, directly or through the rooms that it allows, stops the configuration.
function(chiploom_library room)
    cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
    if(NOT room IN_LIST CHIPLOOM_ROOMS)
        message(FATAL_ERROR "src/${room} is no room of the house: add it to CHIPLOOM_ROOMS in cmake/Layers.cmake")
    endif()
    chiploom_check_uses(${room} ${arg_DEPENDS})
    add_library(${room} STATIC ${arg_SOURCES})
    add_library(ChipLoom::${room} ALIAS ${room})
    target_include_directories(${room} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    list(TRANSFORM arg_DEPENDS REPLACE "^([A-Z][A-Za-z_]+)$" "ChipLoom::\\1")
    target_link_libraries(${room} PUBLIC ${arg_DEPENDS} PRIVATE ChipLoomFlags)
    chiploom_precompile(${room} Room)
endfunction()

# Called once all rooms are declared: what a room links by other ways than its declaration obeys the table too.
function(chiploom_check_links)
    foreach(room IN LISTS CHIPLOOM_ROOMS)
        if(TARGET ${room})
            get_target_property(links ${room} LINK_LIBRARIES)
            list(TRANSFORM links REPLACE "^ChipLoom::" "")
            chiploom_check_uses(${room} ${links})
        endif()
    endforeach()
endfunction()

# chiploom_resource_library(<name> SOURCE <product of rcc>)
# A library ChipLoom::<name>. A resource registers itself when the program starts, and nothing refers to it by name: so
# whoever links one of these libraries takes the whole of it.
function(chiploom_resource_library name)
    cmake_parse_arguments(arg "" "SOURCE" "" ${ARGN})
    add_library(${name}Data STATIC ${arg_SOURCE})
    set_target_properties(${name}Data PROPERTIES AUTOMOC OFF)
    target_link_libraries(${name}Data PRIVATE Qt5::Core)
    add_library(${name} INTERFACE)
    add_library(ChipLoom::${name} ALIAS ${name})
    target_link_libraries(${name} INTERFACE $<LINK_LIBRARY:WHOLE_ARCHIVE,${name}Data>)
endfunction()

# What ships: the programs and what lies beside them.
add_custom_target(programs)

# chiploom_executable(<name> SOURCES <files> DEPENDS <rooms>): a thin main over a room.
function(chiploom_executable name)
    cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    list(TRANSFORM arg_DEPENDS PREPEND "ChipLoom::")
    target_link_libraries(${name} PRIVATE ${arg_DEPENDS} ChipLoomFlags)
    add_dependencies(programs ${name})
endfunction()

# chiploom_test(<name> SOURCES <files> DEPENDS <rooms> [OFFSCREEN])
# A GoogleTest program whose tests ctest lists one by one. OFFSCREEN tests run on Qt's offscreen platform. Suites whose
# instantiation is named Slow or Matrix take the label "slow" (left out by --quick) or "matrix" (run by --all alone).
function(chiploom_test name)
    cmake_parse_arguments(arg "OFFSCREEN" "" "SOURCES;DEPENDS;LIBRARIES" ${ARGN})
    set(main main.cpp)
    if(arg_OFFSCREEN)
        set(main mainGui.cpp)
    endif()
    add_executable(${name} ${arg_SOURCES} ${PROJECT_SOURCE_DIR}/tests/${main})
    list(TRANSFORM arg_DEPENDS PREPEND "ChipLoom::")
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${arg_DEPENDS} ${arg_LIBRARIES} GTest::gtest GTest::gmock ChipLoomFlags)
    target_compile_definitions(${name} PRIVATE
        CHIPLOOM_SOURCE_DIR="${PROJECT_SOURCE_DIR}" CHIPLOOM_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    target_compile_options(${name} PRIVATE ${CHIPLOOM_TEST_FLAGS})
    chiploom_precompile(${name} Test)
    include(GoogleTest)
    set(filter_every "-Matrix*:Slow*")
    set(filter_slow "Slow*")
    set(filter_matrix "Matrix*")
    foreach(label every slow matrix)
        gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 TEST_PREFIX "${name}."
            TEST_FILTER "${filter_${label}}"
            PROPERTIES TIMEOUT 300 ENVIRONMENT "QT_QPA_PLATFORM=offscreen" LABELS ${label})
    endforeach()
endfunction()

# chiploom_bench(<name> SOURCES <files> DEPENDS <rooms>): a Google Benchmark program in bench/. It may
# use the helpers of tests/.
function(chiploom_bench name)
    cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS;LIBRARIES" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    list(TRANSFORM arg_DEPENDS PREPEND "ChipLoom::")
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/bench ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${arg_DEPENDS} ${arg_LIBRARIES} benchmark::benchmark ChipLoomFlags)
    target_compile_definitions(${name} PRIVATE
        CHIPLOOM_SOURCE_DIR="${PROJECT_SOURCE_DIR}" CHIPLOOM_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
endfunction()
