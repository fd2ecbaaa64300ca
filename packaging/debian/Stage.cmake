# Run by CPack when all is installed to the folder that becomes the package: adds what only Debian wants, and
# compresses what Debian wants compressed, to the same bytes each time.
set(usr ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr)
set(doc ${usr}/share/doc/leafwright)

file(COPY ${CPACK_LEAFWRIGHT_DEBIAN_FILES}/ DESTINATION ${doc} FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
# MuPDF is part of the programs where there is no shared one.
if(EXISTS /usr/share/doc/libmupdf-dev/copyright)
  configure_file(/usr/share/doc/libmupdf-dev/copyright ${doc}/copyright.libmupdf COPYONLY)
endif()

file(GLOB manuals ${usr}/share/man/man*/*.[1-9])
execute_process(COMMAND gzip -9nf ${manuals} ${doc}/changelog.Debian COMMAND_ERROR_IS_FATAL ANY)
