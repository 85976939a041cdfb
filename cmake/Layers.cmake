# The two kinds of library a folder may hold, and the rule that keeps them apart.
#
#   blockhouse_rules(<folder> SOURCES ... [LINK ...])     text rules: C++ standard library only
#   blockhouse_windows(<folder> SOURCES ... [LINK ...])   widgets that read, call rules and show
#   blockhouse_resources(<folder> <file>...)              what those widgets show
#
# A rules library that links Qt, directly or through another target, stops the configuration. Including Qt
# without linking it fails to compile, since Qt's headers are on no default include path.

add_library(blockhouse_options INTERFACE)
target_include_directories(blockhouse_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(blockhouse_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${BLOCKHOUSE_WERROR}>:-Werror>)
if(BLOCKHOUSE_SANITIZE)
  target_compile_options(blockhouse_options INTERFACE
    -fsanitize=${BLOCKHOUSE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(blockhouse_options INTERFACE -fsanitize=${BLOCKHOUSE_SANITIZE})
endif()

function(blockhouse_assert_no_qt origin target)
  if(target MATCHES "^Qt|QScintilla|_windows$|^blockhouse_app$")
    message(FATAL_ERROR "${origin} is a rules library but links ${target}")
  endif()
  if(TARGET ${target})
    get_target_property(links ${target} INTERFACE_LINK_LIBRARIES)
    if(links)
      foreach(link IN LISTS links)
        blockhouse_assert_no_qt(${origin} ${link})
      endforeach()
    endif()
  endif()
endfunction()

function(blockhouse_rules folder)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINK")
  set(target ${folder}_rules)
  add_library(${target} STATIC ${ARG_SOURCES})
  set_target_properties(${target} PROPERTIES AUTOMOC OFF)
  target_link_libraries(${target} PUBLIC blockhouse_options ${ARG_LINK})
  foreach(link IN LISTS ARG_LINK)
    blockhouse_assert_no_qt(${target} ${link})
  endforeach()
endfunction()

function(blockhouse_windows folder)
  if(BLOCKHOUSE_RULES_ONLY)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;LINK")
  set(target ${folder}_windows)
  add_library(${target} STATIC ${ARG_SOURCES})
  target_link_libraries(${target} PUBLIC blockhouse_options ${folder}_rules Qt6::Widgets ${ARG_LINK})
endfunction()

# Drawings that the folder's widgets find under ":/" and their path from the top. The toolkit's own command for it
# takes care that the linker drops none of them; CMAKE_AUTORCC_OPTIONS are for its resource compiler.
function(blockhouse_resources folder)
  if(BLOCKHOUSE_RULES_ONLY)
    return()
  endif()
  set(base ${CMAKE_SOURCE_DIR})
  set(files ${ARGN})
  if(BLOCKHOUSE_ARTWORK_RENDERER)
    set(base ${CMAKE_BINARY_DIR}/artwork)
    set(files "")
    foreach(drawing IN LISTS ARGN)
      cmake_path(ABSOLUTE_PATH drawing NORMALIZE)
      cmake_path(RELATIVE_PATH drawing BASE_DIRECTORY ${CMAKE_SOURCE_DIR} OUTPUT_VARIABLE place)
      execute_process(COMMAND ${BLOCKHOUSE_ARTWORK_RENDERER} ${drawing} ${base}/${place}
                      OUTPUT_VARIABLE drawn COMMAND_ERROR_IS_FATAL ANY)
      string(REGEX REPLACE "\n" ";" drawn "${drawn}")
      list(APPEND files ${drawn})
      set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${drawing})
    endforeach()
  endif()
  qt_add_resources(${folder}_windows ${folder} PREFIX / BASE ${base} FILES ${files}
                   OPTIONS ${CMAKE_AUTORCC_OPTIONS})
endfunction()
