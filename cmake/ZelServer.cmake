# zelUtilities.dll: the automation server with its type library, and the manifest that lies beside it.
enable_language(RC)

# The type library, compiled from the description that is kept. The compiler complains of what it cannot store and
# succeeds nevertheless, so any word from it fails the build.
find_program(WIDL NAMES widl widl-stable REQUIRED)
find_path(WINE_IDL oaidl.idl PATHS /usr/include/wine/wine/windows /usr/include/wine/windows NO_DEFAULT_PATH REQUIRED
          NO_CMAKE_FIND_ROOT_PATH)
find_path(WINE_TYPE_LIBRARIES stdole2.tlb PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows /usr/lib/wine/x86_64-windows
          NO_DEFAULT_PATH REQUIRED NO_CMAKE_FIND_ROOT_PATH)
set(typeLibrary ${PROJECT_BINARY_DIR}/generated/zelUtilities.tlb)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(bits 64)
  set(architecture amd64)
else()
  set(bits 32)
  set(architecture x86)
endif()
add_custom_command(
  OUTPUT ${typeLibrary}
  COMMAND ${PROJECT_SOURCE_DIR}/cmake/quietly.sh ${WIDL} -t -m${bits} -o ${typeLibrary} -I ${WINE_IDL} -L
          ${WINE_TYPE_LIBRARIES} ${CMAKE_CURRENT_SOURCE_DIR}/zelUtilities.idl
  DEPENDS zelUtilities.idl ${PROJECT_SOURCE_DIR}/cmake/quietly.sh
  COMMENT "Compiling the type library"
  VERBATIM)

configure_file(zelUtilities.rc.in ${PROJECT_BINARY_DIR}/generated/zelUtilities.rc @ONLY)
set_source_files_properties(${PROJECT_BINARY_DIR}/generated/zelUtilities.rc PROPERTIES OBJECT_DEPENDS ${typeLibrary})

add_library(
  zelUtilities_dll SHARED
  Bridge.cpp
  CallArguments.cpp
  ClassFactory.cpp
  ConnectionPoint.cpp
  EnumeratorBridge.cpp
  ErrorInfo.cpp
  EventSinks.cpp
  Exports.cpp
  Registration.cpp
  ScriptValue.cpp
  ServedClass.cpp
  ServerLife.cpp
  StoreReference.cpp
  SystemGuid.cpp
  TypeLibrary.cpp
  zelUtilities.def
  ${PROJECT_BINARY_DIR}/generated/zelUtilities.rc)
set_target_properties(zelUtilities_dll PROPERTIES OUTPUT_NAME zelUtilities PREFIX "" IMPORT_PREFIX "lib")
target_link_libraries(zelUtilities_dll PRIVATE zel_library zel_server zel_interface zel_flags advapi32 ole32 oleaut32 uuid)
# The entry points are found by their plain names, also where functions are decorated with their arguments' size.
target_link_options(zelUtilities_dll PRIVATE -s $<$<EQUAL:${bits},32>:-Wl,--enable-stdcall-fixup>)
add_custom_command(
  TARGET zelUtilities_dll POST_BUILD
  COMMAND ${PROJECT_SOURCE_DIR}/cmake/check-dll.sh ${CMAKE_OBJDUMP} $<TARGET_FILE:zelUtilities_dll>
  VERBATIM)
add_dependencies(zel_libraries zelUtilities_dll)

configure_file(zelUtilities.manifest.in ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/zelUtilities.manifest @ONLY)

install(TARGETS zelUtilities_dll RUNTIME DESTINATION bin)
install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/zelUtilities.manifest DESTINATION bin)
