# What "cmake --install" lays down: the headers as <zelUtilities/datalist/zelNodeList.h>, the libraries, the
# program zel, and a package for find_package(zelUtilities), whose target is zelUtilities::zelUtilities.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/zelUtilities)
get_property(libraries GLOBAL PROPERTY ZEL_LIBRARIES)
list(REMOVE_ITEM libraries zel_host zel_server) # belong to the programs, as their headers do

add_library(zel_all INTERFACE)
set_target_properties(zel_all PROPERTIES EXPORT_NAME zelUtilities)
target_link_libraries(zel_all INTERFACE zel_library)

install(TARGETS zel_interface ${libraries} zel_all EXPORT zelUtilities ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT zelUtilities NAMESPACE zelUtilities:: DESTINATION ${package})
if(TARGET zel)
  install(TARGETS zel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(DIRECTORY src/ ${PROJECT_BINARY_DIR}/generated/
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zelUtilities
        FILES_MATCHING PATTERN "*.h"
        PATTERN host EXCLUDE
        PATTERN server EXCLUDE
        PATTERN linux EXCLUDE
        PATTERN windows EXCLUDE)

if(WIN32)
  set(findDependencies "")
else()
  set(findDependencies "include(CMakeFindDependencyMacro)\nfind_dependency(LibXml2)\nfind_dependency(SQLite3)\nfind_dependency(Threads)\n")
endif()
file(CONFIGURE OUTPUT zelUtilitiesConfig.cmake
     CONTENT "@findDependencies@include(\${CMAKE_CURRENT_LIST_DIR}/zelUtilities.cmake)\n" @ONLY)
write_basic_package_version_file(zelUtilitiesConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zelUtilitiesConfig.cmake ${PROJECT_BINARY_DIR}/zelUtilitiesConfigVersion.cmake
        DESTINATION ${package})

if(TARGET zelUtilities_dll AND CMAKE_SIZEOF_VOID_P EQUAL 8)
  include(cmake/ZelPackage.cmake)
endif()
