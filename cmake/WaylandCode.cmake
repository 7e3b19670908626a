# A static library of the client code for Wayland protocols: orvantile_wayland_code(name description.xml …).
function(orvantile_wayland_code name)
  pkg_check_modules(wayland REQUIRED IMPORTED_TARGET GLOBAL wayland-client)
  pkg_get_variable(wayland_scanner wayland-scanner wayland_scanner)
  set(generated "${CMAKE_CURRENT_BINARY_DIR}/${name}")
  file(MAKE_DIRECTORY "${generated}")
  foreach(description IN LISTS ARGN)
    get_filename_component(protocol "${description}" NAME_WE)
    add_custom_command(OUTPUT "${generated}/${protocol}.h" "${generated}/${protocol}.c"
      COMMAND "${wayland_scanner}" client-header "${description}" "${generated}/${protocol}.h"
      COMMAND "${wayland_scanner}" private-code "${description}" "${generated}/${protocol}.c"
      DEPENDS "${description}" VERBATIM)
    list(APPEND sources "${generated}/${protocol}.h" "${generated}/${protocol}.c")
  endforeach()
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} SYSTEM PUBLIC "${generated}")
  target_link_libraries(${name} PUBLIC PkgConfig::wayland)
endfunction()
