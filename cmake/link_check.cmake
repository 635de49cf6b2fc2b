# SPDX-License-Identifier: MIT
# A build that is only linked, with link time optimisation, by which the compiler sees all sources of
# a program at once: a record, function or variable that is one thing here and another there under
# the same name is an error.
if(QUORIX_LINK_CHECK)
  set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
  add_link_options(-Wodr -Wlto-type-mismatch -Werror)
endif()
