# zelmor_bundle_executable(<target> <bundle dir> <identifier> <name>)
# Places <target>'s program in <bundle dir>/Contents/MacOS and writes the
# bundle's Info.plist beside it, so every program of the project lives in a
# bundle of the same shape and is found through its Info.plist.
function(zelmor_bundle_executable target bundle_dir identifier name)
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
