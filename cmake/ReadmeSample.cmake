# The first C++ sample of README.md, compiled and linked with the tests so that it stays true.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/README.md)
file(READ ${PROJECT_SOURCE_DIR}/README.md readme)
string(FIND "${readme}" "```cpp\n" begin)
math(EXPR begin "${begin} + 7")
string(SUBSTRING "${readme}" ${begin} -1 sample)
string(FIND "${sample}" "```" end)
string(SUBSTRING "${sample}" 0 ${end} sample)
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/generated/readme_sample.cpp CONTENT "${sample}" @ONLY)

add_executable(readme_sample ${PROJECT_BINARY_DIR}/generated/readme_sample.cpp)
target_link_libraries(readme_sample PRIVATE zel_library zel_flags)
