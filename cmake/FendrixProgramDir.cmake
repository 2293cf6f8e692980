# The program's folder: the executable with Fendrix.ini, Language/ and tip.txt beside it.
# The build tree holds the same layout in bin/, so the built program runs in place; the
# install rule lays it out under <prefix>/lib/fendrix with a link in <prefix>/bin.
set(FENDRIX_PROGRAM_DIR "${CMAKE_BINARY_DIR}/bin")
set(FENDRIX_INSTALL_PROGRAM_DIR "${CMAKE_INSTALL_LIBDIR}/fendrix")
set(FENDRIX_DATA_DIR "${CMAKE_SOURCE_DIR}/data")

file(GLOB_RECURSE FENDRIX_DATA_FILES CONFIGURE_DEPENDS RELATIVE "${FENDRIX_DATA_DIR}" "${FENDRIX_DATA_DIR}/*")

# Copy the program's data files into the build tree's program folder. A language file the
# running program has grown is not overwritten by a rebuild unless its source changed.
function(fendrix_stage_program_data target)
  set(staged)
  foreach(rel IN LISTS FENDRIX_DATA_FILES)
    set(out "${FENDRIX_PROGRAM_DIR}/${rel}")
    add_custom_command(OUTPUT "${out}"
      COMMAND ${CMAKE_COMMAND} -E copy "${FENDRIX_DATA_DIR}/${rel}" "${out}"
      DEPENDS "${FENDRIX_DATA_DIR}/${rel}"
      COMMENT "Staging ${rel}")
    list(APPEND staged "${out}")
  endforeach()
  add_custom_target(${target} ALL DEPENDS ${staged})
endfunction()

function(fendrix_install_program exe)
  install(TARGETS ${exe} RUNTIME DESTINATION "${FENDRIX_INSTALL_PROGRAM_DIR}")
  install(DIRECTORY "${FENDRIX_DATA_DIR}/" DESTINATION "${FENDRIX_INSTALL_PROGRAM_DIR}")
  install(CODE "
    file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    file(CREATE_LINK \"../${FENDRIX_INSTALL_PROGRAM_DIR}/${exe}\"
         \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/${exe}\" SYMBOLIC)")
endfunction()
