# How a folder of src/screens becomes a QML module.

# tarnwick_qml_module(score URI Tarnwick.Score QML_FILES A.qml SOURCES a.cpp HEADERS b.h
#                     RESOURCES c.svg LINKS Qt6::Quick tarnwick::components)
#
# Makes the static library tarnwick_score and the plugin tarnwick_scoreplugin, which an executable
# links beside it. Files lie flat in the module, whatever folder they come from.
function(tarnwick_qml_module name)
    cmake_parse_arguments(ARG "" "URI" "QML_FILES;SOURCES;HEADERS;RESOURCES;LINKS" ${ARGN})
    set(headers ${ARG_HEADERS})
    foreach(source IN LISTS ARG_SOURCES)
        string(REGEX REPLACE "\\.cpp$" ".h" header ${source})
        list(APPEND headers ${header})
    endforeach()
    foreach(file IN LISTS ARG_QML_FILES)
        get_filename_component(flat ${file} NAME)
        set_source_files_properties(${file} PROPERTIES QT_RESOURCE_ALIAS ${flat})
    endforeach()
    string(REPLACE . / folder ${ARG_URI})
    qt_add_library(tarnwick_${name} STATIC)
    add_library(tarnwick::${name} ALIAS tarnwick_${name})
    # The generated registration includes each header by its bare name.
    foreach(header IN LISTS headers)
        get_filename_component(place ${CMAKE_CURRENT_SOURCE_DIR}/${header} DIRECTORY)
        list(APPEND places ${place})
    endforeach()
    list(REMOVE_DUPLICATES places)
    target_include_directories(tarnwick_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src PRIVATE ${places})
    target_link_libraries(tarnwick_${name} PUBLIC ${ARG_LINKS})
    qt_add_qml_module(tarnwick_${name}
        URI ${ARG_URI}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${folder}
        QML_FILES ${ARG_QML_FILES}
        SOURCES ${ARG_SOURCES} ${headers}
        RESOURCES ${ARG_RESOURCES}
        DEPENDENCIES QtQuick
    )
    tarnwick_quieten_generated(tarnwick_${name})
endfunction()

# What Qt's tools write is not held to our warnings.
function(tarnwick_quieten_generated target)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "(/\\.rcc/|_qmltyperegistrations\\.cpp$)")
    set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)
endfunction()
