# The functions that every folder's CMakeLists.txt is written in.

# What a client of any target sees: C++20 and includes relative to src/.
add_library(zel_interface INTERFACE)
set_target_properties(zel_interface PROPERTIES EXPORT_NAME interface)
target_compile_features(zel_interface INTERFACE cxx_std_20)
target_include_directories(
  zel_interface
  INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src> $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/generated>
            $<INSTALL_INTERFACE:include> $<INSTALL_INTERFACE:include/zelUtilities>)

# How our own sources are compiled, and nobody else's.
add_library(zel_flags INTERFACE)
target_compile_options(
  zel_flags
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Werror
            -Wshadow=local
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Wimplicit-fallthrough)
if(WIN32)
  # min and max stay functions; the system's text functions are the UTF-16 ones.
  target_compile_definitions(zel_flags INTERFACE NOMINMAX UNICODE _UNICODE)
endif()

add_custom_target(zel_libraries COMMENT "All libraries, no programs")

# zel_add_library(<folder> [SOURCES file...] [DEPENDS folder...] [LIBRARIES target-or-library...])
# The library zel_<folder>. DEPENDS are folders below it, passed on to whoever links it; LIBRARIES are system
# libraries that only its sources know. Without sources it is a mere name for what it depends on.
function(zel_add_library folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;DEPENDS;LIBRARIES")
  list(TRANSFORM arg_DEPENDS PREPEND zel_)
  set(target zel_${folder})
  if(arg_SOURCES)
    add_library(${target} STATIC ${arg_SOURCES})
    target_link_libraries(
      ${target}
      PUBLIC zel_interface ${arg_DEPENDS}
      PRIVATE ${arg_LIBRARIES} $<BUILD_INTERFACE:zel_flags>)
    add_dependencies(zel_libraries ${target})
  else()
    add_library(${target} INTERFACE)
    target_link_libraries(${target} INTERFACE zel_interface ${arg_DEPENDS} ${arg_LIBRARIES})
  endif()
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${folder})
  set_property(GLOBAL APPEND PROPERTY ZEL_LIBRARIES ${target})
endfunction()

# zel_add_executable(<target> [OUTPUT name] [SOURCES file...] [DEPENDS folder...])
# A program over the library; nothing while it has no sources.
function(zel_add_executable target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "OUTPUT" "SOURCES;DEPENDS")
  if(NOT arg_SOURCES)
    return()
  endif()
  list(TRANSFORM arg_DEPENDS PREPEND zel_)
  add_executable(${target} ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE ${arg_DEPENDS} zel_interface zel_flags)
  if(arg_OUTPUT)
    set_target_properties(${target} PROPERTIES OUTPUT_NAME ${arg_OUTPUT})
  endif()
endfunction()

# zel_add_tests(<folder> [SOURCES file...] [DEPENDS folder...] [LIBRARIES target...] [TIMEOUT seconds])
# The GoogleTest program test_<folder>, registered with ctest under the same name. It depends on its folder by
# itself; DEPENDS are further folders. It runs with a fresh ZELORA_HOME and, for Windows, in a fresh Wine prefix.
function(zel_add_tests folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "TIMEOUT" "SOURCES;DEPENDS;LIBRARIES")
  if(NOT arg_SOURCES OR NOT ZEL_BUILD_TESTS)
    return()
  endif()
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 300)
  endif()
  set(target test_${folder})
  list(TRANSFORM arg_DEPENDS PREPEND zel_)
  if(TARGET zel_${folder})
    list(APPEND arg_DEPENDS zel_${folder})
  endif()
  add_executable(${target} ${arg_SOURCES})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${target} PRIVATE ${arg_DEPENDS} ${arg_LIBRARIES} zel_interface zel_flags gmock_main)
  add_test(NAME ${target}
           COMMAND ${PROJECT_SOURCE_DIR}/cmake/run-test.sh ${PROJECT_BINARY_DIR}/test-results ${target}
                   ${arg_TIMEOUT} ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${target}>)
  # The runner ends the program and its processes at its own time limit; this one is for a stuck runner.
  math(EXPR limit "${arg_TIMEOUT} + 60")
  set_tests_properties(${target} PROPERTIES TIMEOUT ${limit})
  add_dependencies(zel_tests ${target})
endfunction()
