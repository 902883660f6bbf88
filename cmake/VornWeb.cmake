# The browser edition: what is different when emscripten compiles (preset "web"; ./web builds and bundles it).

# Debian's headers without all others of its include folder, which are not for this compiler.
set(VORN_WEB_INCLUDE ${PROJECT_BINARY_DIR}/include)
file(MAKE_DIRECTORY ${VORN_WEB_INCLUDE})
foreach(library IN ITEMS nlohmann)
  if(NOT EXISTS /usr/include/${library})
    message(FATAL_ERROR "/usr/include/${library} is missing: install nlohmann-json3-dev")
  endif()
  file(CREATE_LINK /usr/include/${library} ${VORN_WEB_INCLUDE}/${library} SYMBOLIC)
endforeach()

# Exceptions end the program and stop what is played. What the compiler's library lacks of C++20 stands before each file.
# Browsers that can unpack the page know vectors of 128 bits. The older clang does not know the marks of newer ones.
string(APPEND CMAKE_CXX_FLAGS " -fexceptions -fno-rtti -include ${PROJECT_SOURCE_DIR}/src/platform/web/missing_library.h")
# The same file comes of it wherever the tree lies.
string(APPEND CMAKE_CXX_FLAGS " -ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -msimd128 -Wno-unknown-warning-option")

add_library(nlohmann_json INTERFACE)
target_include_directories(nlohmann_json SYSTEM INTERFACE ${VORN_WEB_INCLUDE})
add_library(nlohmann_json::nlohmann_json ALIAS nlohmann_json)

# Small before all, since every function that can lead to a wait is made longer by Asyncify; fast where it counts. (Of
# several levels given to one file em++ takes the first.)
set(CMAKE_CXX_FLAGS_RELEASE -DNDEBUG)
set(VORN_WEB_FAST chronology statistics study)
# What is done once with a file need not be fast.
set(VORN_WEB_SMALL "^(agreement|comparison|corrected|file_|finding_|pointer_years|reference|ring_alignment|site|studied_cores|tucson_lines)")
add_link_options(-Oz)

# Nothing is thrown in these rooms, nor through them.
set(VORN_WEB_WITHOUT_EXCEPTIONS desk import panels situation statistics study)

# The linker's JavaScript tools are where Debian keeps such modules.
set_property(GLOBAL PROPERTY RULE_LAUNCH_LINK "env NODE_PATH=/usr/share/nodejs")
