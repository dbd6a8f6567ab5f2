# One place for what every target of ours has in common, so that no folder can forget a warning or a sanitizer.

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

# Hardening, which a test reads off the installed programs. The sanitizers have checks of their own in place of fortified
# calls, and those need an optimised build.
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
  # Without it the fuzzer cannot see which inputs lead where.
  target_compile_options(TalmoOptions INTERFACE -fsanitize=fuzzer-no-link)
endif()

# talmo_precompile(NAME): reads the large headers from the one precompiled header, where that is switched on. It cuts
# the time of a build by more than half, but ccache does not work with it: for presets that are built once.
function(talmo_precompile name)
  if(NOT TALMO_PRECOMPILE)
    return()
  endif()
  if(NOT TARGET TalmoPrecompiled)
    file(WRITE ${CMAKE_BINARY_DIR}/precompiled.cpp "")
    add_library(TalmoPrecompiled OBJECT ${CMAKE_BINARY_DIR}/precompiled.cpp)
    target_link_libraries(TalmoPrecompiled PRIVATE TalmoOptions Qt6::Core QCoro6::Core Threads::Threads)
    target_precompile_headers(TalmoPrecompiled PRIVATE
      <QtCore/QtCore> <QCoro/QCoroFuture> <QCoro/QCoroTask>
      <algorithm> <chrono> <functional> <memory> <optional> <stop_token> <vector>)
  endif()
  target_precompile_headers(${name} REUSE_FROM TalmoPrecompiled)
endfunction()

# talmo_library(NAME SOURCES … LINKS … [MOC]): a folder's library.
function(talmo_library name)
  cmake_parse_arguments(ARG "MOC" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC TalmoOptions ${ARG_LINKS})
  talmo_precompile(${name})
  if(ARG_MOC)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
endfunction()
