# The application bundle: what is in it beside the program. Included where the program is made.
set(ORVANTILE_UPDATE_FEED "" CACHE STRING "Address of the feed that Sparkle asks for updates")
set(ORVANTILE_UPDATE_KEY "" CACHE STRING "Public key (EdDSA, base64) of whoever signs the updates")
set(ORVANTILE_SPARKLE_FRAMEWORK "" CACHE PATH "Sparkle.framework to bring along; without it there are no updates")

set(id org.orvantile.Orvantile) # names the domain of the settings, too
set(icon "${CMAKE_CURRENT_LIST_DIR}/Orvantile.icns")
file(GLOB pictures CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/src/resources/Orvantile_Orvantile.bundle/*.png")
target_sources(orvantile PRIVATE "${icon}" ${pictures})
set_source_files_properties("${icon}" PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
set_source_files_properties(${pictures}
  PROPERTIES MACOSX_PACKAGE_LOCATION Resources/Orvantile_Orvantile.bundle)

configure_file("${CMAKE_CURRENT_LIST_DIR}/Info.plist.in" "${CMAKE_CURRENT_BINARY_DIR}/Info.plist" @ONLY)
set_target_properties(orvantile PROPERTIES MACOSX_BUNDLE ON OUTPUT_NAME Orvantile
  MACOSX_BUNDLE_INFO_PLIST "${CMAKE_CURRENT_BINARY_DIR}/Info.plist")
target_link_options(orvantile PRIVATE "LINKER:-rpath,@executable_path/../Frameworks")

set(frameworks "$<TARGET_BUNDLE_CONTENT_DIR:orvantile>/Frameworks")
add_custom_command(TARGET orvantile POST_BUILD COMMAND ${CMAKE_COMMAND} -E make_directory "${frameworks}" VERBATIM)
if(ORVANTILE_SPARKLE_FRAMEWORK)
  # Its links between versions have to stay links.
  add_custom_command(TARGET orvantile POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E rm -rf "${frameworks}/Sparkle.framework"
    COMMAND cp -R "${ORVANTILE_SPARKLE_FRAMEWORK}" "${frameworks}/Sparkle.framework" VERBATIM)
endif()

install(TARGETS orvantile BUNDLE DESTINATION .)
