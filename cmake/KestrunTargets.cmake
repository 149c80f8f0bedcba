# What all targets of the house share, said once.

option(KESTRUN_WERROR "Treat compiler warnings as errors" ON)
set(KESTRUN_SANITIZER "" CACHE STRING "Sanitizers of the whole build: empty, address or thread")
set_property(CACHE KESTRUN_SANITIZER PROPERTY STRINGS "" address thread)

add_library(kestrun_settings INTERFACE)
target_include_directories(kestrun_settings INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(kestrun_settings INTERFACE -Wall -Wextra -Wpedantic -fvisibility=hidden -fvisibility-inlines-hidden)
if(CMAKE_UNITY_BUILD)
  # The compiler takes the joined files for headers, in which types of one file would be a fault.
  target_compile_options(kestrun_settings INTERFACE -Wno-subobject-linkage)
endif()
if(KESTRUN_WERROR)
  target_compile_options(kestrun_settings INTERFACE -Werror)
endif()
# What is compiled into the libraries alone. The address sanitizer watches the product; instrumenting the tests would
# double the time of a build and find faults of tests only.
add_library(kestrun_product_settings INTERFACE)
if(KESTRUN_SANITIZER STREQUAL "address")
  # Type identity across modules is checked by vptr, which cannot see Qt's own hidden classes. A null pointer stops the
  # program without a check of its own, and the checks of pointers at each use would double the time of a build.
  target_compile_options(kestrun_product_settings INTERFACE -fsanitize=address,undefined
    -fno-sanitize=vptr,null,alignment,object-size -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(kestrun_settings INTERFACE -fsanitize=address,undefined)
elseif(KESTRUN_SANITIZER STREQUAL "thread")
  target_compile_options(kestrun_settings INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(kestrun_settings INTERFACE -fsanitize=thread)
endif()

add_library(kestrun_qt_settings INTERFACE)
target_link_libraries(kestrun_qt_settings INTERFACE kestrun_settings)
target_compile_definitions(kestrun_qt_settings INTERFACE
  QT_DISABLE_DEPRECATED_BEFORE=0x050c00
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
  QT_USE_QSTRINGBUILDER)

# kestrun_library(NAME SHARED|STATIC [EXPORT MACRO] SOURCES ... LINK ...)
# Sources are listed with their headers. EXPORT names the macro of a shared library's visible classes:
# while the library itself is compiled, MACRO_BUILD is defined.
function(kestrun_library name kind)
  cmake_parse_arguments(ARG "" "EXPORT" "SOURCES;LINK;PRIVATE_LINK" ${ARGN})
  add_library(${name} ${kind} ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC kestrun_qt_settings ${ARG_LINK} PRIVATE kestrun_product_settings ${ARG_PRIVATE_LINK})
  if(ARG_EXPORT)
    target_compile_definitions(${name} PRIVATE ${ARG_EXPORT}_BUILD)
  endif()
endfunction()

# All benches, and all that a user runs; the latter are listed in the top-level file.
add_custom_target(kestrun_benches)

# What the thread sanitizer runs: tests of code that more than one thread enters.
add_custom_target(tsan_tests)

# kestrun_test(NAME LABEL folder [THREADS [FOREIGN_TRANSPORT]] [TIMEOUT seconds] [SOURCES ...] LINK ...)
# One executable per class, NAME.cpp in the calling folder unless SOURCES say more. Windows stay off the screen.
# THREADS adds the label "threads" and has the test run under the thread sanitizer too. FOREIGN_TRANSPORT says that the
# threads of a remote-call library take part, which comes without instrumentation: the sanitizer then leaves out what
# happens inside such modules. TIMEOUT is what the test may take without a sanitizer; with one it is five times that.
function(kestrun_test name)
  cmake_parse_arguments(ARG "THREADS;FOREIGN_TRANSPORT" "TIMEOUT" "LABEL;SOURCES;LINK" ${ARGN})
  if(NOT ARG_SOURCES)
    set(ARG_SOURCES ${name}.cpp)
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  if(KESTRUN_SANITIZER)
    math(EXPR ARG_TIMEOUT "${ARG_TIMEOUT} * 5")
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE kestrun_qt_settings Qt5::Test ${ARG_LINK})
  target_compile_definitions(${name} PRIVATE
    KESTRUN_CONTROLLER_DIR="${CMAKE_SOURCE_DIR}/examples/controllers"
    KESTRUN_SOURCE_DIR="${CMAKE_SOURCE_DIR}" KESTRUN_BUILD_DIR="${CMAKE_BINARY_DIR}")
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  if(KESTRUN_SANITIZER)
    target_compile_definitions(${name} PRIVATE KESTRUN_SANITIZED)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  if(ARG_THREADS)
    list(APPEND ARG_LABEL threads)
    add_dependencies(tsan_tests ${name})
  endif()
  set(foreign)
  if(ARG_FOREIGN_TRANSPORT)
    set(foreign ":ignore_noninstrumented_modules=1")
  endif()
  set_tests_properties(${name} PROPERTIES
    LABELS "${ARG_LABEL}"
    TIMEOUT ${ARG_TIMEOUT}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0:use_tls=0;UBSAN_OPTIONS=print_stacktrace=1;TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/threads.supp${foreign}")
endfunction()

# kestrun_bench(NAME LINK ...): a program that prints what it measured beside its floor and the ratio of both.
function(kestrun_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  if(NOT ARG_SOURCES)
    set(ARG_SOURCES ${name}.cpp)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE kestrun_qt_settings ${ARG_LINK})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bench)
  add_dependencies(kestrun_benches ${name})
endfunction()
