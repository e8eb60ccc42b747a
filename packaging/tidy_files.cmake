# Run on the files of the package before it is made: CPack's own stripping leaves the compiler's
# comments in, and directories have the permissions that the caller's umask made.
execute_process(
  COMMAND ${CPACK_NODEWARDEN_STRIP} --remove-section=.comment --remove-section=.note
    ${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_NODEWARDEN_PROGRAM}
  COMMAND_ERROR_IS_FATAL ANY)
file(CHMOD_RECURSE ${CPACK_TEMPORARY_INSTALL_DIRECTORY} DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
