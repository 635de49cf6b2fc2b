# SPDX-License-Identifier: MIT
# The warnings that every target of the project is built with.
function(quorix_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
  if(QUORIX_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
