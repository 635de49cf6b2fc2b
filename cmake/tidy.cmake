# SPDX-License-Identifier: MIT
# The target `tidy`: clang-tidy over the library's own sources and headers, with the checks of
# .clang-tidy.
find_program(RUN_CLANG_TIDY NAMES run-clang-tidy run-clang-tidy-14)
if(RUN_CLANG_TIDY AND NOT CMAKE_CROSSCOMPILING)
  list(JOIN families "|" tidy_folders)
  add_custom_target(tidy
    COMMAND ${RUN_CLANG_TIDY} -quiet -p ${CMAKE_BINARY_DIR}
      "-header-filter=${PROJECT_SOURCE_DIR}/(include/quorix|${tidy_folders})/.*"
      "${PROJECT_SOURCE_DIR}/(${tidy_folders})/.*"
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "clang-tidy"
    VERBATIM USES_TERMINAL)
endif()
