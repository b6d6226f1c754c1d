# Puts the files of the home directory beside the program. Run at install, with built_home and source_home set.
#   The database is the user's from the moment it stands there, and is never replaced.
#   A template or a report layout is replaced only while the user has not changed it: while it is still what the last
#   install put there, by the checksums kept in installed.txt.
#   The help and the slide show are the program's own and are replaced.
cmake_policy(VERSION 3.25) # the install script that includes this sets none

set(home "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}")
set(checksums "${home}/installed.txt")

if(NOT EXISTS "${home}/Tallywell.mdb")
  file(COPY "${built_home}/Tallywell.mdb" DESTINATION "${home}")
endif()

set(known "")
if(EXISTS "${checksums}")
  file(STRINGS "${checksums}" known)
endif()
set(now_known "")
file(GLOB changeable "${source_home}/*.rpt" "${source_home}/template.xls")
foreach(source IN LISTS changeable)
  get_filename_component(name "${source}" NAME)
  set(target "${home}/${name}")
  file(SHA256 "${source}" new)
  if(EXISTS "${target}")
    file(SHA256 "${target}" present)
    if(NOT "${present} ${name}" IN_LIST known)
      message(STATUS "Kept as it is, since it has been changed: ${target}")
      continue()
    endif()
  endif()
  file(COPY_FILE "${source}" "${target}")
  list(APPEND now_known "${new} ${name}")
endforeach()
list(JOIN now_known "\n" text)
file(WRITE "${checksums}" "${text}\n")

file(COPY "${source_home}/GWL HELP 2.1.HLP" "${source_home}/gettingstarted.pps" DESTINATION "${home}")
