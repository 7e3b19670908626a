# The headers say which version they are of.
file(STRINGS "${ORVANTILE_QT_HEADERS}/QtCore/qconfig.h" line REGEX "QT_VERSION_STR")
string(REGEX MATCH "[0-9.]+" PACKAGE_VERSION "${line}")
if(NOT PACKAGE_VERSION VERSION_LESS PACKAGE_FIND_VERSION)
  set(PACKAGE_VERSION_COMPATIBLE ON)
endif()
