# Run by CPack when everything is installed into its stages, before the packages are made.
foreach(component plugin tools demo)
    set(stage ${CPACK_TEMPORARY_DIRECTORY}/${component})
    execute_process(
        COMMAND ${CMAKE_CURRENT_LIST_DIR}/stage-package ${stage} padscope-${component} ${stage}-symbols
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()
