# kwe_rez_file(<target> <source.r> <output> [INCLUDES <directory>...] [DEPENDS <file>...])
#
# Compiles a Rez source into a resource file at build time whenever the
# source, a file named in DEPENDS, the standard declarations or kwerez
# change. The standard declarations (Types.r ...) are always on the include
# path; INCLUDES adds more. kwerez writes nothing when the source has a
# mistake, so a failed build never leaves a half-made resource file.
#
# The function only reads KWE_REZ (the kwerez to run), KWE_REZ_TYPES_DIR
# and KWE_REZ_DEPENDS, so a package configuration file can set those to the
# installed tool and include this file unchanged.
function(kwe_rez_file target source output)
  cmake_parse_arguments(REZ "" "" "INCLUDES;DEPENDS" ${ARGN})
  set(includes "")
  foreach(dir IN LISTS REZ_INCLUDES)
    list(APPEND includes -i ${dir})
  endforeach()
  add_custom_command(OUTPUT ${output}
    COMMAND ${KWE_REZ} ${includes} -i ${KWE_REZ_TYPES_DIR} -o ${output} ${source}
    DEPENDS ${source} ${REZ_DEPENDS} ${KWE_REZ_DEPENDS}
    COMMENT "Compiling ${source} into ${output}"
    VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${output})
endfunction()
