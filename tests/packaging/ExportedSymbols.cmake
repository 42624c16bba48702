# LIBRARY exports exactly the symbols of LIST.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${NM} --dynamic --defined-only --demangle "${LIBRARY}"
  OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "(^|\n)[0-9a-f]* [A-Za-z] " ";" exported "${output}")
string(REPLACE "\n" "" exported "${exported}")
list(REMOVE_DUPLICATES exported)
list(REMOVE_ITEM exported "")
file(STRINGS "${LIST}" intended REGEX "^[^#]")

set(missing ${intended})
list(REMOVE_ITEM missing ${exported})
set(unintended ${exported})
list(REMOVE_ITEM unintended ${intended})
if(missing OR unintended)
  list(JOIN missing "\n  " missing)
  list(JOIN unintended "\n  " unintended)
  message(FATAL_ERROR "${LIBRARY} and ${LIST} differ.\nIn the list, but not exported:\n  ${missing}\n"
    "Exported, but not in the list:\n  ${unintended}")
endif()
