# Makes the Windows installer's package of an unpacked component package.
#   cmake -DSOURCE=INSTALLER.WXS -DFOLDER=PACKAGE -DVERSION=1.0.0 -DMOMENT=SECONDS -DOUTPUT=FILE.msi
#         -P make_installer.cmake
# Equal files, version and moment give equal bytes: what the tool draws at random or takes from the
# clock is set again by what the package holds.
file(READ ${SOURCE} source)
string(REGEX MATCH "UpgradeCode=\"([-0-9A-F]+)\"" found "${source}")
set(upgrade_code ${CMAKE_MATCH_1})
string(UUID product NAMESPACE ${upgrade_code} NAME "${VERSION}" TYPE SHA1 UPPER)

# The cabinet has local times.
set(ENV{TZ} UTC)
get_filename_component(output_folder ${OUTPUT} DIRECTORY)
get_filename_component(output_folder ${output_folder} ABSOLUTE)
get_filename_component(output_name ${OUTPUT} NAME)
set(output ${output_folder}/${output_name})
function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${FOLDER} COMMAND_ERROR_IS_FATAL ANY)
endfunction()
run(${CMAKE_COMMAND} -E rm -f ${output})
run(wixl --arch x64 -D version=${VERSION} -D product=${product} -o ${output} ${SOURCE})

# An upgrade compares versions; without one in the package, the older DLL would win.
string(REGEX REPLACE "^([0-9]+\\.[0-9]+)\\.([0-9]+)$" "\\1.0.\\2" file_version ${VERSION})
string(REGEX MATCHALL "dll_x[0-9]+\" Source" dlls "${source}")
set(commands "")
foreach(dll IN LISTS dlls)
  string(REGEX MATCH "dll_x[0-9]+" dll ${dll})
  list(APPEND commands
    "UPDATE `File` SET `Version` = '${file_version}', `Language` = '1033' WHERE `File` = '${dll}'"
    "DELETE FROM `MsiFileHash` WHERE `File_` = '${dll}'")
endforeach()
# The tool does not mark texts with variables of the environment in them as such.
string(REGEX MATCHALL "Name=\"[A-Za-z]+\"[ \n]+Type=\"expandable\" Value=\"[^\"]+" expandable "${source}")
foreach(value IN LISTS expandable)
  string(REGEX MATCH "Name=\"([A-Za-z]+)\".*Value=\"([^\"]+)" value "${value}")
  list(APPEND commands
    "UPDATE `Registry` SET `Value` = '#%${CMAKE_MATCH_2}' WHERE `Name` = '${CMAKE_MATCH_1}'")
endforeach()
run(msibuild ${output} -q ${commands})

# The package's own identifier follows from what is in it.
set(contents "${source}${VERSION}${MOMENT}")
string(REGEX MATCHALL "Source=\"[^\"]+" files "${source}")
foreach(file IN LISTS files)
  string(REPLACE "Source=\"" "" file "${file}")
  file(SHA256 ${FOLDER}/${file} sum)
  string(APPEND contents ${sum})
endforeach()
string(UUID package NAMESPACE ${product} NAME "${contents}" TYPE SHA1 UPPER)
set(ENV{SOURCE_DATE_EPOCH} ${MOMENT})
string(TIMESTAMP moment "%Y/%m/%d %H:%M:%S" UTC)
execute_process(COMMAND msiinfo export ${output} _SummaryInformation
  OUTPUT_VARIABLE summary COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "\n9\t[^\n]*" "\n9\t{${package}}" summary "${summary}")
string(REGEX REPLACE "\n(12|13)\t[^\r\n]*" "\n\\1\t${moment}" summary "${summary}")
file(WRITE ${output_folder}/_SummaryInformation.idt "${summary}")
run(msibuild ${output} -i ${output_folder}/_SummaryInformation.idt)
run(${CMAKE_COMMAND} -E rm -f ${output_folder}/_SummaryInformation.idt)
