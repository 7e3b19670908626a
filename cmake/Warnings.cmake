# Warnings are errors. Headers of libraries are system headers and stay silent.
option(ORVANTILE_WARNINGS_ARE_ERRORS "Stop at warnings; compilers newer than ours have warnings of their own" ON)
add_library(orvantile_warnings INTERFACE)
add_library(orvantile::warnings ALIAS orvantile_warnings)
target_compile_options(orvantile_warnings INTERFACE
  $<$<BOOL:${ORVANTILE_WARNINGS_ARE_ERRORS}>:-Werror> -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
  -Wno-missing-field-initializers -Wsuggest-override -Wnon-virtual-dtor -Wcast-qual -Wformat=2 -Wundef -Wunused -Woverloaded-virtual
  -Wdouble-promotion -Wextra-semi
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op -Wduplicated-branches>)
