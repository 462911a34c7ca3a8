# Adds FILE of the current folder to the build, compressed as Debian wants it and without a time of the build: FILE.gz.
#   padscope_add_compressed(TARGET FILE)
function(padscope_add_compressed TARGET FILE)
    set(source ${CMAKE_CURRENT_SOURCE_DIR}/${FILE})
    set(compressed ${CMAKE_CURRENT_BINARY_DIR}/${FILE}.gz)
    add_custom_command(OUTPUT ${compressed}
        COMMAND sh -c "gzip -9nc '${source}' >'${compressed}'"
        DEPENDS ${source}
        VERBATIM)
    add_custom_target(${TARGET} ALL DEPENDS ${compressed})
endfunction()
