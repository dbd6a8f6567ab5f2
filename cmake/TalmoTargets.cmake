# The settings shared by all targets, so that no folder can miss a warning or a sanitizer.

find_program(TALMO_CCACHE ccache)
if(TALMO_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${TALMO_CCACHE})
endif()

add_library(TalmoOptions INTERFACE)
target_compile_options(TalmoOptions INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wold-style-cast -Wcast-align -Wimplicit-fallthrough -Werror -pthread)
target_compile_definitions(TalmoOptions INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS QT_STRICT_ITERATORS)
target_include_directories(TalmoOptions INTERFACE ${CMAKE_SOURCE_DIR}/src)

# Line numbers are enough for a backtrace; describing every variable too takes a quarter of the build time.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1 -DNDEBUG")

# Hardening, which a test verifies on the installed programs. The sanitizers have their own checks instead of fortified
# calls, which need an optimised build.
include(CheckPIESupported)
check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
target_compile_options(TalmoOptions INTERFACE -fstack-protector-strong)
target_link_options(TalmoOptions INTERFACE LINKER:-z,relro,-z,now,-z,noexecstack)
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
  target_compile_options(TalmoOptions INTERFACE -fcf-protection)
endif()
if(CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo|MinSizeRel)$" AND NOT TALMO_SANITIZE)
  set(TALMO_IS_HARDENED ON)
  target_compile_options(TalmoOptions INTERFACE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()

if(TALMO_SANITIZE)
  target_compile_options(TalmoOptions INTERFACE
    -fsanitize=${TALMO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(TalmoOptions INTERFACE -fsanitize=${TALMO_SANITIZE})
endif()

if(TALMO_FUZZERS)
  # Provides the coverage feedback that guides the fuzzer.
  target_compile_options(TalmoOptions INTERFACE -fsanitize=fuzzer-no-link)
endif()

# talmo_precompile(NAME [WIDGETS] [TESTS]): uses precompiled headers, which more than halves the build time: those of
# Qt's core and coroutines, and those of widgets or of the test framework for targets with many such files. The two
# compiler options let ccache detect changes in them.
function(talmo_precompile name)
  if(NOT TALMO_PRECOMPILE)
    return()
  endif()
  cmake_parse_arguments(ARG "WIDGETS;TESTS" "" "" ${ARGN})
  set(headers
    <QtCore/QtCore> <QCoro/QCoroFuture> <QCoro/QCoroTask>
    <algorithm> <chrono> <functional> <memory> <optional> <stop_token> <vector>)
  set(links TalmoOptions Qt6::Core QCoro6::Core Threads::Threads)
  set(precompiled TalmoPrecompiled)
  if(ARG_WIDGETS)
    list(APPEND headers <QtWidgets/QtWidgets>)
    list(APPEND links Qt6::Widgets)
    string(APPEND precompiled Widgets)
  endif()
  set(options $<IF:$<CXX_COMPILER_ID:Clang>,SHELL:-Xclang -fno-pch-timestamp,-fpch-preprocess>)
  # Rarely, g++ rejects what it has just written. It then reads the headers themselves, which is slow but right.
  list(APPEND options $<$<CXX_COMPILER_ID:GNU>:-Wno-error=invalid-pch>)
  if(ARG_TESTS)
    list(APPEND headers <gmock/gmock.h> <gtest/gtest.h>)
    list(APPEND links GTest::gmock GTest::gtest)
    string(APPEND precompiled Tests)
    # The tested code is optimised as in a release; optimising the tests too would only cost minutes of build time.
    list(APPEND options -O0 -U_FORTIFY_SOURCE)
  endif()
  if(NOT TARGET ${precompiled})
    file(WRITE ${CMAKE_BINARY_DIR}/${precompiled}.cpp "")
    add_library(${precompiled} OBJECT ${CMAKE_BINARY_DIR}/${precompiled}.cpp)
    target_link_libraries(${precompiled} PRIVATE ${links})
    target_precompile_headers(${precompiled} PRIVATE ${headers})
    target_compile_options(${precompiled} PRIVATE ${options})
  endif()
  target_compile_options(${name} PRIVATE ${options})
  target_precompile_headers(${name} REUSE_FROM ${precompiled})
endfunction()

# talmo_library(NAME SOURCES … LINKS … [MOC] [WIDGETS]): the library of a folder.
function(talmo_library name)
  cmake_parse_arguments(ARG "MOC;WIDGETS" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC TalmoOptions ${ARG_LINKS})
  if(ARG_WIDGETS)
    talmo_precompile(${name} WIDGETS)
  else()
    talmo_precompile(${name})
  endif()
  if(ARG_MOC)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
endfunction()
