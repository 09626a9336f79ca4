# How a folder of src/ becomes a library, and how each source brings its test along.

set(CMAKE_AUTOMOC ON)
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII
    QT_DISABLE_DEPRECATED_BEFORE=0x060400 QT_WARN_DEPRECATED_UP_TO=0x060400)

file(STRINGS ${CMAKE_SOURCE_DIR}/cmake/untested_sources.txt TARNWICK_UNTESTED REGEX "^[^#]")

# Qt's headers, compiled once for all libraries and once for all tests: they are most of what a
# compiler reads here.
function(tarnwick_precompile)
    file(WRITE ${CMAKE_BINARY_DIR}/precompiled/empty.cpp "")
    add_library(tarnwick_precompiled STATIC ${CMAKE_BINARY_DIR}/precompiled/empty.cpp)
    target_link_libraries(tarnwick_precompiled PRIVATE Qt6::Core tl::expected)
    set(common <QByteArray> <QByteArrayView> <QDateTime> <QHash> <QList> <QObject> <QSet> <QString>
        <QStringList> <QUrl> <QUuid> <algorithm> <functional> <memory> <optional> <utility>
        <variant> <vector> <tl/expected.hpp>)
    target_precompile_headers(tarnwick_precompiled PRIVATE ${common})
    if(TARNWICK_TESTS)
        add_executable(tarnwick_precompiled_test ${CMAKE_BINARY_DIR}/precompiled/empty_main.cpp)
        file(WRITE ${CMAKE_BINARY_DIR}/precompiled/empty_main.cpp "int main() {}\n")
        target_link_libraries(tarnwick_precompiled_test PRIVATE Qt6::Core Qt6::Test tl::expected)
        target_precompile_headers(tarnwick_precompiled_test PRIVATE ${common} <QTest> <QSignalSpy>
            <QTemporaryDir> <QFile> <QDir> <QFileInfo> <QProcess>)
    endif()
    set_target_properties(tarnwick_precompiled PROPERTIES AUTOMOC OFF)
endfunction()

# tarnwick_library(serato SOURCES a.cpp b.cpp HEADERS c.h DEPENDS foundation platform LINKS Qt6::Core)
#
# Makes the static library tarnwick_serato from sources of the present folder. Each a.cpp stands for
# a.cpp and a.h. Remembers every source, so that tests/ can insist on a_test.cpp.
function(tarnwick_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;HEADERS;DEPENDS;LINKS" ${ARGN})
    set(headers ${ARG_HEADERS})
    foreach(source IN LISTS ARG_SOURCES)
        string(REGEX REPLACE "\\.cpp$" ".h" header ${source})
        if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${header})
            list(APPEND headers ${header})
        endif()
    endforeach()
    list(REMOVE_DUPLICATES headers)
    add_library(tarnwick_${name} STATIC ${ARG_SOURCES} ${headers})
    add_library(tarnwick::${name} ALIAS tarnwick_${name})
    list(TRANSFORM ARG_DEPENDS PREPEND tarnwick::)
    target_include_directories(tarnwick_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(tarnwick_${name} PUBLIC Qt6::Core tl::expected ${ARG_DEPENDS} ${ARG_LINKS})
    tarnwick_remember_sources(tarnwick_${name} ${ARG_SOURCES} ${ARG_HEADERS})
endfunction()

# Notes sources with the library that a test of theirs links. For sources that a library of another
# folder compiles (the write commands), call it by hand.
function(tarnwick_remember_sources library)
    foreach(source IN LISTS ARGN)
        file(RELATIVE_PATH path ${CMAKE_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR}/${source})
        set_property(GLOBAL APPEND PROPERTY TARNWICK_SOURCES "${path}=${library}")
    endforeach()
endfunction()

# Adds sources of the present folder to the library app: members of AppState that their owners define.
# To be called ahead of src/app.
function(tarnwick_commands)
    list(TRANSFORM ARGN PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ OUTPUT_VARIABLE paths)
    set_property(GLOBAL APPEND PROPERTY TARNWICK_COMMANDS ${paths})
    tarnwick_remember_sources(tarnwick_app ${ARGN})
endfunction()

# tarnwick_test(tests/path/x_test.cpp LINKS libraries): one Qt Test executable named x_test.
function(tarnwick_test file)
    cmake_parse_arguments(ARG "" "TIMEOUT" "LINKS;LABELS" ${ARGN})
    get_filename_component(test ${file} NAME_WE)
    add_executable(${test} ${file})
    target_link_libraries(${test} PRIVATE ${ARG_LINKS} tarnwick::test_support Qt6::Test)
    target_precompile_headers(${test} REUSE_FROM tarnwick_precompiled_test)
    add_test(NAME ${test} COMMAND ${test})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 300) # they take seconds, but a busy machine may be ten times slower
    endif()
    set_tests_properties(${test} PROPERTIES TIMEOUT ${ARG_TIMEOUT} LABELS "${ARG_LABELS}"
        ENVIRONMENT "${TARNWICK_TEST_ENVIRONMENT}")
endfunction()

set(TARNWICK_TEST_ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen;QT_QUICK_BACKEND=software;QT_FORCE_STDERR_LOGGING=1;LC_ALL=C.UTF-8;TZ=UTC")
if(TARNWICK_SANITIZE STREQUAL "thread")
    # The sanitizer doesn't see the locks of libraries built without it, so what these do with memory
    # is left alone. It remembers as far back as it can, so that reports tell both sides.
    list(APPEND TARNWICK_TEST_ENVIRONMENT
        "TSAN_OPTIONS=ignore_noninstrumented_modules=1:history_size=7")
endif()

# Adds the test of every remembered source; stops the configure step where one is missing. A header
# without a source of its own may have a test, and needs none if it only declares.
function(tarnwick_tests_of_sources)
    get_property(pairs GLOBAL PROPERTY TARNWICK_SOURCES)
    foreach(pair IN LISTS pairs)
        string(REGEX MATCH "^(.*)\\.(cpp|h)=(.*)$" matched ${pair})
        set(path ${CMAKE_MATCH_1})
        set(suffix ${CMAKE_MATCH_2})
        set(library ${CMAKE_MATCH_3})
        set(test ${CMAKE_SOURCE_DIR}/tests/${path}_test.cpp)
        if(EXISTS ${test})
            tarnwick_test(${test} LINKS ${library})
        elseif(suffix STREQUAL "cpp" AND NOT "${path}.cpp" IN_LIST TARNWICK_UNTESTED)
            message(FATAL_ERROR "src/${path}.cpp has no tests/${path}_test.cpp")
        endif()
    endforeach()
endfunction()
