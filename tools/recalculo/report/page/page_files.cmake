# Run by the build: cmake -DOUTPUT=page_files.cpp -P page_files.cmake writes the files of the pages into a source file.

# sha256_base64(variable text) puts SHA-256 of the text, in base 64, into the variable.
function(sha256_base64 variable text)
    set(digits ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/)
    string(SHA256 hex "${text}")
    # Six hexadecimal digits are four of base 64. Two zeros complete the 64 hexadecimal digits, and "=" says so.
    set(base64 "")
    foreach(begin RANGE 0 60 6)
        string(SUBSTRING "${hex}00" ${begin} 6 group)
        foreach(shift 18 12 6 0)
            math(EXPR digit "(0x${group} >> ${shift}) & 63")
            string(SUBSTRING ${digits} ${digit} 1 digit)
            string(APPEND base64 ${digit})
        endforeach()
    endforeach()
    string(SUBSTRING "${base64}" 0 43 base64)
    set(${variable} "${base64}=" PARENT_SCOPE)
endfunction()

file(READ ${CMAKE_CURRENT_LIST_DIR}/page_frame.mustache page_frame_template)
file(READ ${CMAKE_CURRENT_LIST_DIR}/result_page.mustache result_page_template)
file(READ ${CMAKE_CURRENT_LIST_DIR}/service_lists.mustache service_lists_template)
file(READ ${CMAKE_CURRENT_LIST_DIR}/comparison_page.mustache comparison_page_template)
file(READ ${CMAKE_CURRENT_LIST_DIR}/choice_page.mustache choice_page_template)
file(READ ${CMAKE_CURRENT_LIST_DIR}/drill_page.mustache drill_page_template)
# The planner in the browser has the same palette (web/build.mjs).
file(READ ${CMAKE_CURRENT_LIST_DIR}/palette.css palette)
file(READ ${CMAKE_CURRENT_LIST_DIR}/page.css page_style)
string(PREPEND page_style "${palette}")
file(READ ${CMAKE_CURRENT_LIST_DIR}/page.js page_script)
sha256_base64(page_style_hash "${page_style}")
sha256_base64(page_script_hash "${page_script}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/page_files.cpp.in ${OUTPUT} @ONLY)
