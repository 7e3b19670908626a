# Warnings are errors. Headers of libraries are system headers and stay silent.
add_library(orvantile_warnings INTERFACE)
add_library(orvantile::warnings ALIAS orvantile_warnings)
target_compile_options(orvantile_warnings INTERFACE
  -Werror -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
  -Wno-missing-field-initializers -Wsuggest-override -Wnon-virtual-dtor -Wcast-qual -Wformat=2 -Wundef -Wunused -Woverloaded-virtual
  -Wdouble-promotion -Wextra-semi
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op -Wduplicated-branches>)
