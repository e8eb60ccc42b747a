# Run on the files of the package before it is made: keeps the program's symbols, in "symbols" beside
# the package, under the build id by which debuggers look for them; strips the program, as CPack's
# own stripping leaves the compiler's comments in; and gives directories the permissions that the
# caller's umask may have taken.
set(program ${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_NODEWARDEN_PROGRAM})

execute_process(COMMAND ${CPACK_NODEWARDEN_READELF} -n ${program}
  OUTPUT_VARIABLE notes COMMAND_ERROR_IS_FATAL ANY)
if(NOT notes MATCHES "Build ID: ([0-9a-f][0-9a-f])([0-9a-f]+)")
  message(FATAL_ERROR "the program has no build id")
endif()
set(symbols ${CPACK_PACKAGE_DIRECTORY}/symbols/.build-id/${CMAKE_MATCH_1}/${CMAKE_MATCH_2}.debug)
cmake_path(GET symbols PARENT_PATH directory)
file(MAKE_DIRECTORY ${directory})
execute_process(COMMAND ${CPACK_NODEWARDEN_OBJCOPY} --only-keep-debug ${program} ${symbols}
  COMMAND_ERROR_IS_FATAL ANY)

execute_process(
  COMMAND ${CPACK_NODEWARDEN_STRIP} --remove-section=.comment --remove-section=.note ${program}
  COMMAND_ERROR_IS_FATAL ANY)

file(CHMOD_RECURSE ${CPACK_TEMPORARY_INSTALL_DIRECTORY} DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
