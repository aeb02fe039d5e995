# In a unity build (CMAKE_UNITY_BUILD), each folder of a target is compiled as one file. scripts/check.sh holds that each
# can be; batches by number would hang on where they are cut.
function(recalculo_por_carpetas target)
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        if(NOT IS_ABSOLUTE ${source})
            get_filename_component(folder ${source} DIRECTORY)
            string(MAKE_C_IDENTIFIER "${folder}" group)
            set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
        endif()
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
endfunction()
