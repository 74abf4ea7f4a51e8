# The package for Windows clients, build/windows-x64/zelUtilities-<version>-windows.zip:
#   cmake --build --preset windows-x64 --target package
# Both libraries, what belongs to them, the scripts, the examples and the reference. The 32-bit library comes from
# the build tree of the preset windows-x86; where its compiler is missing, it is left out.
set(folder zelUtilities-${PROJECT_VERSION}-windows)
set(zip ${PROJECT_BINARY_DIR}/${folder}.zip)
set(stage ${PROJECT_BINARY_DIR}/package)

find_program(compilerForX86 i686-w64-mingw32-g++-posix)
if(compilerForX86)
  set(buildX86
      COMMAND ${CMAKE_COMMAND} --preset windows-x86
      COMMAND ${CMAKE_COMMAND} --build --preset windows-x86 --target zelUtilities_dll)
  set(treeX86 ${PROJECT_SOURCE_DIR}/build/windows-x86)
endif()

configure_file(${CMAKE_CURRENT_LIST_DIR}/ZelPackageConfig.cmake.in ${PROJECT_BINARY_DIR}/generated/ZelPackageConfig.cmake @ONLY)
# Not CPack's own target of this name, which would build every test first; so its configuration lies where CMake
# does not look for one.
add_custom_target(
  package
  ${buildX86}
  COMMAND ${PROJECT_SOURCE_DIR}/cmake/stage-package.sh ${stage}/${folder} ${PROJECT_BINARY_DIR} ${treeX86}
  COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:zel> docs ${stage}/${folder}/reference
  COMMAND ${CMAKE_CPACK_COMMAND} --config ${PROJECT_BINARY_DIR}/generated/ZelPackageConfig.cmake
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  COMMENT "Packing ${folder}.zip"
  VERBATIM)
add_dependencies(package zelUtilities_dll zel)
