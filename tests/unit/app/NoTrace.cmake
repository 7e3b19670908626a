# What is released records nothing: neither the variable that would switch a record on nor its format is in PROGRAM.
file(STRINGS "${PROGRAM}" program REGEX "orvantile" LIMIT_COUNT 1)
if(NOT program)
  message(FATAL_ERROR "${PROGRAM} does not look like the program")
endif()
file(STRINGS "${PROGRAM}" found REGEX "ORVANTILE_TRACE|traceEvents")
if(found)
  message(FATAL_ERROR "${PROGRAM} can record where time goes: ${found}")
endif()
