# Run by CPack when the packages are made. Their outermost archive has the rights that the caller's umask leaves; ar's is
# the same for everybody.
set(parts debian-binary control.tar.gz data.tar.gz)
foreach(package ${CPACK_PACKAGE_FILES})
    execute_process(
        COMMAND ar x ${package}
        WORKING_DIRECTORY ${CPACK_TEMPORARY_DIRECTORY} COMMAND_ERROR_IS_FATAL ANY)
    file(REMOVE ${package})
    execute_process(
        COMMAND ar rcSD ${package} ${parts}
        WORKING_DIRECTORY ${CPACK_TEMPORARY_DIRECTORY} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
