# z4400conv starts once for every file a script converts, so its start-up
# counts: it takes pugixml, libdeflate and the C++ run-time library into the
# executable instead of resolving their symbols at every start. Every other
# program (the window, the tests, the tools) links them as shared libraries.
#
# The libraries link through z4400::pugixml and z4400::deflate, which give the
# static archive to a program marked with z4400_link_statically() and the
# shared library to the rest.
option(Z4400_STATIC_LIBRARIES
       "Link pugixml, libdeflate and the C++ run-time library into z4400conv" ON)

# The sanitizers and the fuzzer need their own run-time libraries shared.
if(Z4400_STATIC_LIBRARIES AND NOT Z4400_SANITIZE AND NOT Z4400_FUZZ)
  set(Z4400_LINK_STATICALLY ON)
else()
  set(Z4400_LINK_STATICALLY OFF)
endif()

if(Z4400_LINK_STATICALLY)
  find_library(Z4400_PUGIXML_ARCHIVE libpugixml.a REQUIRED)
  find_library(Z4400_LIBDEFLATE_ARCHIVE libdeflate.a REQUIRED)
else()
  set(Z4400_PUGIXML_ARCHIVE pugixml::pugixml)
  set(Z4400_LIBDEFLATE_ARCHIVE PkgConfig::LIBDEFLATE)
endif()

# z4400_static_or_shared(NAME ARCHIVE SHARED): the target z4400::NAME, which
# links ARCHIVE into a program marked with z4400_link_statically() and the
# imported target SHARED into any other.
function(z4400_static_or_shared name archive shared)
  add_library(z4400_${name} INTERFACE)
  target_link_libraries(z4400_${name} INTERFACE
    "$<IF:$<BOOL:$<TARGET_PROPERTY:Z4400_STATIC_LIBRARIES>>,${archive},${shared}>")
  target_include_directories(z4400_${name} INTERFACE
    $<TARGET_PROPERTY:${shared},INTERFACE_INCLUDE_DIRECTORIES>)
  add_library(z4400::${name} ALIAS z4400_${name})
endfunction()

z4400_static_or_shared(pugixml ${Z4400_PUGIXML_ARCHIVE} pugixml::pugixml)
z4400_static_or_shared(deflate ${Z4400_LIBDEFLATE_ARCHIVE} PkgConfig::LIBDEFLATE)

# z4400_link_statically(TARGET): the program links the static archives and
# the C++ run-time library (when Z4400_STATIC_LIBRARIES is on and the build
# has no sanitizers).
function(z4400_link_statically target)
  if(NOT Z4400_LINK_STATICALLY)
    return()
  endif()
  set_target_properties(${target} PROPERTIES Z4400_STATIC_LIBRARIES ON)
  target_link_options(${target} PRIVATE -static-libstdc++ -static-libgcc)
endfunction()
