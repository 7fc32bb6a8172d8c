# The command line program runs where there is no display: it links none of the window libraries.
#     cmake -DPROGRAM=<chiploom-cli> -P CheckLinks.cmake

execute_process(COMMAND readelf --dynamic ${PROGRAM} OUTPUT_VARIABLE needed COMMAND_ERROR_IS_FATAL ANY)
if(NOT needed MATCHES "libQt5Core")
    message(FATAL_ERROR "${PROGRAM}: no list of libraries could be read")
endif()
if(needed MATCHES "libQt5(Gui|Widgets|Svg|PrintSupport)[^]]*")
    message(FATAL_ERROR "${PROGRAM} links ${CMAKE_MATCH_0}")
endif()
