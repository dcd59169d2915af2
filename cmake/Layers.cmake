# quenmar_target(NAME): the settings that every target of the project shares.
function(quenmar_target name)
  target_compile_options(${name} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees copies overlap where short strings are joined; no such copy is ever made.
    target_compile_options(${name} PRIVATE -Wno-restrict)
  endif()
  # An index past the end of a container ends a debug build, whose tests would not notice it else.
  target_compile_definitions(${name} PRIVATE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
  if(QUENMAR_WERROR)
    target_compile_options(${name} PRIVATE -Werror)
  endif()
  if(QUENMAR_HARDENING AND NOT WIN32)
    target_compile_options(${name} PRIVATE -D_FORTIFY_SOURCE=2 -fstack-protector-strong)
    target_link_options(${name} PRIVATE -Wl,-z,relro,-z,now)
  endif()
  if(WIN32)
    target_compile_definitions(${name} PRIVATE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
  endif()
endfunction()

# quenmar_layer(NAME [SOURCES file...] [POSIX file...] [WINDOWS file...] [LINKS layer...]):
# one folder of src/ as a static library. Its headers are included as "folder/File.h".
function(quenmar_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "SOURCES;POSIX;WINDOWS;LINKS")
  if(WIN32)
    list(APPEND layer_SOURCES ${layer_WINDOWS})
  else()
    list(APPEND layer_SOURCES ${layer_POSIX})
  endif()
  add_library(${name} STATIC ${layer_SOURCES})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
  target_link_libraries(${name} PUBLIC ${layer_LINKS})
  quenmar_target(${name})
endfunction()

# quenmar_host_headers(TARGET folder...): lets a cross build use header-only libraries of the build
# machine, without opening the rest of /usr/include to the cross compiler.
function(quenmar_host_headers target)
  set(headers "${CMAKE_BINARY_DIR}/host-headers")
  file(MAKE_DIRECTORY "${headers}")
  foreach(folder IN LISTS ARGN)
    file(CREATE_LINK "/usr/include/${folder}" "${headers}/${folder}" SYMBOLIC)
  endforeach()
  target_include_directories(${target} SYSTEM PRIVATE "${headers}")
endfunction()
