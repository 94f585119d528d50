# zelmor_bundle_executable(<target> <bundle dir> <identifier> <name> [BACKGROUND])
# Places <target>'s program in <bundle dir>/Contents/MacOS and writes the
# bundle's Info.plist beside it, so every program of the project lives in a
# bundle of the same shape and is found through its Info.plist.
# BACKGROUND marks a program without a Dock icon or menu bar of its own (the
# status-bar companion).
function(zelmor_bundle_executable target bundle_dir identifier name)
    cmake_parse_arguments(PARSE_ARGV 4 arg "BACKGROUND" "" "")
    set(PLIST_EXTRA "")
    if(arg_BACKGROUND)
        set(PLIST_EXTRA "\t<key>LSUIElement</key>\n\t<true/>\n")
    endif()
    set(PLIST_IDENTIFIER "${identifier}")
    set(PLIST_NAME "${name}")
    get_target_property(output_name ${target} OUTPUT_NAME)
    if(NOT output_name)
        set(output_name ${target})
    endif()
    set(PLIST_EXECUTABLE "${output_name}")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/Info.plist.in"
                   "${bundle_dir}/Contents/Info.plist" @ONLY)
    file(MAKE_DIRECTORY "${bundle_dir}/Contents/Resources")
    set_target_properties(${target} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${bundle_dir}/Contents/MacOS")
endfunction()
