# Targets of the house. Each library shows the others only its own folder: a link in the build
# tree holds that one folder, so that a room which does not link another cannot include it either.

add_library(tarn_options INTERFACE)
target_compile_features(tarn_options INTERFACE cxx_std_20)
target_compile_options(tarn_options INTERFACE -Wall -Wextra -Wpedantic -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # False at -O3 for a text put in front of a std::string.
  target_compile_options(tarn_options INTERFACE -Wno-restrict)
endif()
if(TARN_SANITIZE)
  target_compile_options(tarn_options INTERFACE -fsanitize=address,undefined
                         -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tarn_options INTERFACE -fsanitize=address,undefined)
endif()
if(TARN_FUZZ)
  target_compile_options(tarn_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined,float-cast-overflow)
  target_link_options(tarn_options INTERFACE -fsanitize=address,undefined)
endif()

# tarn_export(TARGET FOLDER): who links the target may include this folder of src (or this file).
function(tarn_export name folder)
  set(root ${CMAKE_BINARY_DIR}/inc/${name})
  get_filename_component(parent ${root}/${folder} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
  get_target_property(kind ${name} TYPE)
  if(kind STREQUAL "INTERFACE_LIBRARY")
    target_include_directories(${name} INTERFACE ${root})
  else()
    target_include_directories(${name} PUBLIC ${root})
  endif()
endfunction()

# tarn_library(NAME FOLDER SOURCES a.cpp ... [LINK lib ...] [PRIVATE lib ...] [MOC])
function(tarn_library name folder)
  cmake_parse_arguments(ARG "MOC" "" "SOURCES;LINK;PRIVATE" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC tarn_options ${ARG_LINK} PRIVATE ${ARG_PRIVATE})
  tarn_export(${name} ${folder})
  if(ARG_MOC)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
endfunction()

# tarn_test(NAME SOURCES a.cpp ... LINK lib ...): one executable, found by CTest case by case.
function(tarn_test name)
  cmake_parse_arguments(ARG "QT" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE tarn_options tarn_testing ${ARG_LINK})
  if(ARG_QT)
    target_link_libraries(${name} PRIVATE tarn_qt_main GTest::gtest Qt6::Test)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  else()
    target_link_libraries(${name} PRIVATE GTest::gtest_main)
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 120 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
