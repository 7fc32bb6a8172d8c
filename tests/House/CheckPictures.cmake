# No picture was left behind outside of docs/ and resources/.
#     cmake -DROOT=<source tree> -P CheckPictures.cmake

cmake_policy(VERSION 3.25)
file(GLOB found ${ROOT}/*.png ${ROOT}/*.jpg)
foreach(room IN ITEMS bench data examples src tests tools)
    file(GLOB_RECURSE left ${ROOT}/${room}/*.png ${ROOT}/${room}/*.jpg)
    list(APPEND found ${left})
endforeach()
if(found)
    list(JOIN found "\n" found)
    message(FATAL_ERROR "Pictures outside of docs:\n${found}")
endif()
