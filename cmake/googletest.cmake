# SPDX-License-Identifier: MIT
# GTest::gtest and GTest::gtest_main: a package for the system that is built for, or else the
# sources, which Debian installs and which serve every system.
set(QUORIX_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH
  "GoogleTest's sources, for where no package of it is found")

find_package(GTest QUIET)
if(TARGET GTest::gtest_main)
  message(STATUS "GoogleTest: the package")
  return()
endif()
if(NOT EXISTS ${QUORIX_GOOGLETEST_SOURCE}/CMakeLists.txt)
  message(FATAL_ERROR "The tests need GoogleTest. Install its package or its sources (then set "
    "QUORIX_GOOGLETEST_SOURCE to their folder), or configure with -DQUORIX_BUILD_TESTS=OFF.")
endif()
message(STATUS "GoogleTest: built from ${QUORIX_GOOGLETEST_SOURCE}")
set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
set(INSTALL_GTEST OFF)
set(BUILD_GMOCK OFF)
add_subdirectory(${QUORIX_GOOGLETEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
foreach(target gtest gtest_main)
  # It builds itself with -Werror, and gcc 12 warns at -O3 where there is nothing.
  target_compile_options(${target} PRIVATE -w)
  if(NOT TARGET GTest::${target})
    add_library(GTest::${target} ALIAS ${target})
  endif()
endforeach()
