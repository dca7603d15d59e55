# Targets of the house. Each library shows the others only its own folder: a link in the build
# tree holds that one folder, so that a room which does not link another cannot include it either.

add_library(tarn_options INTERFACE)
target_compile_features(tarn_options INTERFACE cxx_std_20)
target_compile_options(tarn_options INTERFACE -Wall -Wextra -Wpedantic -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # False at -O3 for a text put in front of a std::string, the last two where its header was
  # precompiled, by which the compiler forgets that it is the system's.
  target_compile_options(tarn_options INTERFACE -Wno-restrict -Wno-stringop-overflow
                         -Wno-array-bounds)
endif()
# A fault in a reader of foreign bytes is to end the program, not to be used. Checks of sizes that
# the compiler knows need its optimiser.
include(CheckCXXCompilerFlag)
foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection
             -ftrivial-auto-var-init=zero)
  string(MAKE_C_IDENTIFIER "TARN_HAS${flag}" known)
  check_cxx_compiler_flag(${flag} ${known})
  if(${known})
    target_compile_options(tarn_options INTERFACE ${flag})
  endif()
endforeach()
target_compile_definitions(tarn_options INTERFACE _GLIBCXX_ASSERTIONS)
if(NOT TARN_SANITIZE AND NOT TARN_THREADS AND NOT TARN_FUZZ)
  target_compile_options(tarn_options INTERFACE
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=3>)
endif()
target_link_options(tarn_options INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
if(TARN_SANITIZE)
  target_compile_options(tarn_options INTERFACE -fsanitize=address,undefined
                         -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tarn_options INTERFACE -fsanitize=address,undefined)
endif()
if(TARN_THREADS)
  target_compile_options(tarn_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(tarn_options INTERFACE -fsanitize=thread)
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
  if(IS_DIRECTORY ${root}/${folder} AND NOT IS_SYMLINK ${root}/${folder}) # once held single files
    file(REMOVE_RECURSE ${root}/${folder})
  endif()
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

# tarn_module(NAME SOURCES a.cpp ... [LINK lib ...]): libtarn-NAME.so, which the program loads at
# first use (platform/Modules.h). Who runs parts of the program depends on `modules`.
add_custom_target(modules)
function(tarn_module name)
  cmake_parse_arguments(ARG "" "COMPONENT" "SOURCES;LINK" ${ARGN})
  add_library(tarn-${name} MODULE ${ARG_SOURCES})
  target_include_directories(tarn-${name} PRIVATE ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(tarn-${name} PRIVATE tarn_options ${ARG_LINK})
  set_target_properties(tarn-${name} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}
                        NO_SONAME ON) # a plug-in: nothing links it
  add_dependencies(modules tarn-${name})
  if(NOT ARG_COMPONENT)
    set(ARG_COMPONENT tarn-view)
  endif()
  # One folder up, CPack would take it for a library and call ldconfig.
  install(TARGETS tarn-${name} LIBRARY DESTINATION lib/tarn-view/plugins COMPONENT ${ARG_COMPONENT})
endfunction()

# tarn_shared_headers(NAME HEADERS h ... LINK lib ...): headers read once, for the targets that
# tarn_takes_headers(NAME target ...) gives them to.
function(tarn_shared_headers name)
  cmake_parse_arguments(ARG "" "" "HEADERS;LINK" ${ARGN})
  if(NOT TARN_PCH)
    return()
  endif()
  file(WRITE ${CMAKE_BINARY_DIR}/${name}.cpp "")
  add_library(${name} STATIC ${CMAKE_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE tarn_options ${ARG_LINK})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()
function(tarn_takes_headers name)
  if(TARGET ${name})
    foreach(target ${ARGN})
      target_precompile_headers(${target} REUSE_FROM ${name})
    endforeach()
  endif()
endfunction()

# tarn_test(NAME SOURCES a.cpp ... LINK lib ... [QT] [THREADS]): one executable, found by CTest case
# by case; those with THREADS are run under the thread sanitizer as well.
function(tarn_test name)
  cmake_parse_arguments(ARG "QT;THREADS" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE tarn_options tarn_testing ${ARG_LINK})
  add_dependencies(${name} modules)
  if(ARG_QT)
    target_link_libraries(${name} PRIVATE tarn_qt_main GTest::gtest Qt6::Test)
    tarn_takes_headers(tarn_test_headers ${name})
  else()
    target_link_libraries(${name} PRIVATE GTest::gtest_main)
  endif()
  set(labels "")
  if(ARG_THREADS)
    set(labels threads)
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 120 ENVIRONMENT "QT_QPA_PLATFORM=offscreen" LABELS "${labels}")
endfunction()
