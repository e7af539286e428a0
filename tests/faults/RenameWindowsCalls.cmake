# Gives the Windows calls in LIBRARY, an archive of addin/platform's objects, the names under which
# windows_calls.cpp has them. TABLE lists the calls; one that it doesn't know is an error, so that no call escapes
# the sweep.
cmake_minimum_required(VERSION 3.25)
file(STRINGS "${TABLE}" rows REGEX "^[A-Z_]+\\(")
set(renamed "")
set(known "")
foreach(row IN LISTS rows)
  string(REGEX REPLACE "^[A-Z_]+\\(([A-Za-z0-9_]+).*" "\\1" call "${row}")
  list(APPEND known "${call}")
  if(NOT row MATCHES "^NEVER_FAILS")
    string(APPEND renamed "__imp_${call} __imp_failable_${call}\n${call} failable_${call}\n")
  endif()
endforeach()

execute_process(COMMAND "${NM}" --undefined-only "${LIBRARY}" OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
# The C runtime is imported as well; it is no part of Windows. Of the libraries that are linked by name, those of
# pictures, processes and requests.
string(REGEX MATCHALL "U (__imp_[A-Za-z0-9]+|Gdi[A-Za-z0-9]+|WinHttp[A-Za-z0-9]+|[A-Za-z]+32[A-Za-z0-9]*)" calls "${symbols}")
foreach(call IN LISTS calls)
  string(REGEX REPLACE "^U (__imp_)?" "" call "${call}")
  if(NOT call IN_LIST known)
    message(FATAL_ERROR "addin/platform calls ${call}, which is not in ${TABLE}.")
  endif()
endforeach()

file(WRITE "${LIBRARY}.renamed" "${renamed}")
execute_process(COMMAND "${OBJCOPY}" "--redefine-syms=${LIBRARY}.renamed" "${LIBRARY}" COMMAND_ERROR_IS_FATAL ANY)
