# Fails when a window text has no Persian translation: lupdate reads the window's sources
# into a copy of the catalogue, where a new or changed text shows as unfinished.
# cmake -DLUPDATE=... -DSOURCES=src/ui -DTS=translations/tahrir_fa.ts -DWORK=dir -P translations_check.cmake
file(MAKE_DIRECTORY "${WORK}")
set(copy "${WORK}/tahrir_fa.ts")
file(COPY_FILE "${TS}" "${copy}")
execute_process(
  COMMAND "${LUPDATE}" -silent -tr-function-alias translate+=Tr,translate+=TrStd -locations none -no-obsolete
          "${SOURCES}" -ts "${copy}"
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "lupdate failed (${status})")
endif()
file(READ "${copy}" text)
string(REGEX MATCHALL "<source>[^<]*</source>[ \n\r\t]*<translation type=\"unfinished\"" open "${text}")
list(LENGTH open count)
if(count GREATER 0)
  string(REPLACE "<translation type=\"unfinished\"" "" open "${open}")
  message(FATAL_ERROR "${count} window texts have no Persian translation in ${TS}:\n${open}")
endif()
