# One place for how a target is built here.

# Paths below the checkout count as relative, so that build folders and fresh clones share the cache.
find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}
                                    CCACHE_NOHASHDIR=1 ${CCACHE})
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

add_library(servo_options INTERFACE)
target_compile_options(servo_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                                               -Wold-style-cast -Woverloaded-virtual)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees an overlap in every "literal" + std::string when it optimises (its bug 105651).
    target_compile_options(servo_options INTERFACE -Wno-restrict)
endif()
if(SERVO_WERROR)
    target_compile_options(servo_options INTERFACE -Werror)
endif()
if(SERVO_SANITIZE)
    # -g1 keeps line numbers in reports at a third of the object size; -O1 keeps the suite quick. The
    # cases themselves do without it, and without the checks of undefined behaviour, which are for
    # the code that they test: to compile the cases is two thirds of a build from nothing, and a
    # third of that went into those checks.
    target_compile_options(servo_options INTERFACE -fsanitize=address,undefined
                                                   -fno-sanitize-recover=undefined
                                                   -fno-omit-frame-pointer -g1
                           $<IF:$<BOOL:$<TARGET_PROPERTY:SERVO_CASES>>,-O0,-O1>
                           $<$<BOOL:$<TARGET_PROPERTY:SERVO_CASES>>:-fno-sanitize=undefined>)
    target_link_options(servo_options INTERFACE -fsanitize=address,undefined)
endif()
if(SERVO_FUZZ)
    target_compile_options(servo_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# servo_layer_includes(<layer>): an include root that shows just this one folder, so that
# #include "link/engine.h" builds only in targets that link the layer.
function(servo_layer_includes layer out)
    set(root ${CMAKE_BINARY_DIR}/include/${layer})
    file(MAKE_DIRECTORY ${root})
    if(NOT EXISTS ${root}/${layer})
        file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${layer} ${root}/${layer} SYMBOLIC)
    endif()
    set(${out} ${root} PARENT_SCOPE)
endfunction()

macro(servo_add_layer layer)
    if(EXISTS ${CMAKE_SOURCE_DIR}/${layer}/CMakeLists.txt)
        add_subdirectory(${layer})
    endif()
endmacro()

# servo_plain_library(<layer> SOURCES ... LINKS ...): target servo_<layer>, no Qt.
function(servo_plain_library layer)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    servo_layer_includes(${layer} root)
    add_library(servo_${layer} STATIC ${ARG_SOURCES})
    target_include_directories(servo_${layer} PUBLIC ${root})
    target_link_libraries(servo_${layer} PUBLIC ${ARG_LINKS} PRIVATE servo_options)
endfunction()

# servo_qt_library(<layer> <suffix> SOURCES ... LINKS ...): target servo_<layer>_<suffix>, with Qt.
function(servo_qt_library layer suffix)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    servo_layer_includes(${layer} root)
    add_library(servo_${layer}_${suffix} STATIC ${ARG_SOURCES})
    set_target_properties(servo_${layer}_${suffix} PROPERTIES AUTOMOC ON)
    target_include_directories(servo_${layer}_${suffix} PUBLIC ${root})
    target_compile_definitions(servo_${layer}_${suffix} PUBLIC QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII)
    target_link_libraries(servo_${layer}_${suffix} PUBLIC ${ARG_LINKS} PRIVATE servo_options)
endfunction()

# servo_program(<name> SOURCES ... LINKS ...): an executable in bin/.
function(servo_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} servo_options)
endfunction()

# Windows are tested with the fonts that the packages bring, so that widths are the same on every
# machine.
set(SERVO_TEST_FONTS FONTCONFIG_FILE=${CMAKE_SOURCE_DIR}/tests/fonts.conf)

# servo_test(<name> SOURCES ... LINKS ... [QT]): a GoogleTest binary; each case is one ctest entry.
# With QT the binary runs as one entry on the offscreen platform, since a display start is dear.
function(servo_test name)
    cmake_parse_arguments(ARG "QT" "TIMEOUT" "SOURCES;LINKS" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    set_target_properties(${name} PROPERTIES SERVO_CASES ON)
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_compile_definitions(${name} PRIVATE SERVO_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
                                               SERVO_BIN_DIR="${CMAKE_BINARY_DIR}/bin")
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gtest servo_options)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    if(ARG_QT)
        target_compile_definitions(${name} PRIVATE QT_NO_KEYWORDS)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
        target_link_libraries(${name} PRIVATE Qt6::Test)
        add_test(NAME ${name} COMMAND ${name})
        # Leaks of the toolkit's own caches are not ours to mend; ours are found by the plain tests.
        set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT} ENVIRONMENT
            "QT_QPA_PLATFORM=offscreen;ASAN_OPTIONS=detect_leaks=0;${SERVO_TEST_FONTS}")
    else()
        target_link_libraries(${name} PRIVATE GTest::gtest_main)
        gtest_discover_tests(${name} TEST_PREFIX ${name}. PROPERTIES TIMEOUT ${ARG_TIMEOUT}
                             DISCOVERY_TIMEOUT 120)
    endif()
endfunction()

# servo_fuzz(<name> SOURCES ... LINKS ...): one LLVMFuzzerTestOneInput. Under the fuzz preset it is a
# fuzzer; in the test build it is a small program that replays fuzz/corpus/<name>/.
function(servo_fuzz name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    if(SERVO_FUZZ)
        add_executable(fuzz_${name} ${ARG_SOURCES})
        target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    else()
        add_executable(fuzz_${name} ${ARG_SOURCES} ${CMAKE_SOURCE_DIR}/fuzz/replay_main.cpp)
        add_test(NAME fuzz.${name}.corpus
                 COMMAND fuzz_${name} ${CMAKE_SOURCE_DIR}/fuzz/corpus/${name})
    endif()
    target_link_libraries(fuzz_${name} PRIVATE ${ARG_LINKS} servo_options)
    set_target_properties(fuzz_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz)
endfunction()

# servo_bench(<name> SOURCES ... LINKS ...): a benchmark program that prints its ratios.
function(servo_bench name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(bench_${name} ${ARG_SOURCES})
    target_compile_definitions(bench_${name} PRIVATE SERVO_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
                                                     SERVO_BIN_DIR="${CMAKE_BINARY_DIR}/bin")
    target_link_libraries(bench_${name} PRIVATE ${ARG_LINKS} benchmark::benchmark servo_options)
    set_target_properties(bench_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bench)
endfunction()
