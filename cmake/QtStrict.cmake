# Qt's strict mode: no implicit text conversions, no keywords, no deprecated calls.
add_library(orvantile_qt_strict INTERFACE)
add_library(orvantile::qt_strict ALIAS orvantile_qt_strict)
target_compile_definitions(orvantile_qt_strict INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
  QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_USE_QSTRINGBUILDER
  QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
