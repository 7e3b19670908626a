# The toolkit for a Mac, as far as compiling and linking go: the headers that are installed here (ORVANTILE_QT_HEADERS)
# and stubs of its frameworks.
set(Qt6_FOUND ON)
set(folders "${ORVANTILE_QT_HEADERS}")
foreach(part IN ITEMS Core Gui Widgets)
  add_library(Qt6::${part} INTERFACE IMPORTED)
  list(APPEND folders "${ORVANTILE_QT_HEADERS}/Qt${part}")
  set_target_properties(Qt6::${part} PROPERTIES
    INTERFACE_SYSTEM_INCLUDE_DIRECTORIES "${folders}" INTERFACE_INCLUDE_DIRECTORIES "${folders}"
    INTERFACE_LINK_LIBRARIES "-framework Qt${part}")
endforeach()
set_property(TARGET Qt6::Gui APPEND PROPERTY INTERFACE_LINK_LIBRARIES Qt6::Core)
set_property(TARGET Qt6::Widgets APPEND PROPERTY INTERFACE_LINK_LIBRARIES Qt6::Gui)

find_program(ORVANTILE_QT_RCC rcc HINTS /usr/lib/qt6/libexec REQUIRED)
function(qt_add_resources result file)
  get_filename_component(name "${file}" NAME_WE)
  set(source "${CMAKE_CURRENT_BINARY_DIR}/qrc_${name}.cpp")
  add_custom_command(OUTPUT "${source}" COMMAND "${ORVANTILE_QT_RCC}" --name ${name} --output "${source}" "${file}"
    DEPENDS "${file}" VERBATIM)
  set(${result} "${source}" PARENT_SCOPE)
endfunction()
