# SPDX-License-Identifier: MIT
# Counts which lines and branches of the library the tests reach; tools/coverage.sh shows them. Only
# the library is compiled for that, without optimisation, so that each branch of the source is one
# of the program, and without exceptions, so that no call counts as a branch.
function(quorix_coverage target)
  if(QUORIX_COVERAGE)
    target_compile_options(${target} PRIVATE -O0 -fno-exceptions --coverage)
  endif()
endfunction()
if(QUORIX_COVERAGE)
  add_link_options(--coverage)
endif()
