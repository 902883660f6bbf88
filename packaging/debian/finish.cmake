# What a Debian package has beyond an installed tree: its changelog, its statement of copyright, and compressed manual
# pages; and every file is of one time, that of the last commit, so that the same sources give the same package. Run by
# CPack on the tree before it is packed.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/changelog newest LIMIT_COUNT 1)
string(FIND "${newest}" "vorn (${CPACK_PACKAGE_VERSION}) " at)
if(NOT at EQUAL 0)
  message(FATAL_ERROR "packaging/debian/changelog begins with \"${newest}\", not with version ${CPACK_PACKAGE_VERSION}")
endif()
set(tree ${CPACK_TEMPORARY_DIRECTORY}/usr/share)
file(COPY ${CMAKE_CURRENT_LIST_DIR}/copyright ${CMAKE_CURRENT_LIST_DIR}/changelog DESTINATION ${tree}/doc/vorn)
# The licence is in the statement of copyright.
file(REMOVE ${tree}/doc/vorn/LICENSE)
file(CREATE_LINK copyright ${tree}/doc/vorn/LICENSE SYMBOLIC)
execute_process(
  COMMAND gzip -9n ${tree}/doc/vorn/changelog ${tree}/man/man1/VORNosx.1 ${tree}/man/man1/vorn.1 ${tree}/man/man1/vorn_replay.1
  COMMAND_ERROR_IS_FATAL ANY)
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(
    COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} +
    COMMAND_ERROR_IS_FATAL ANY)
endif()
