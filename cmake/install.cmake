# SPDX-License-Identifier: MIT
# What `cmake --install` gives: headers, libraries, quorix.pc and find_package(Quorix). Nothing of it
# holds an absolute path, so that the whole can be moved.
include(CMakePackageConfigHelpers)

# The C headers, all of them.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/quorix DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN *.h)

# The bitmap fonts, where the library looks for them.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/fonts/ DESTINATION ${CMAKE_INSTALL_DATADIR}/quorix/fonts
  FILES_MATCHING PATTERN *.bdf PATTERN LICENSE.txt)

# Two sets, because only the static library makes its user look for zlib.
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Quorix)
install(TARGETS quorix EXPORT QuorixShared)
install(TARGETS quorix_static EXPORT QuorixStatic)
foreach(set QuorixShared QuorixStatic)
  install(EXPORT ${set} NAMESPACE Quorix:: FILE ${set}Targets.cmake DESTINATION ${package_folder})
endforeach()

configure_package_config_file(cmake/QuorixConfig.cmake.in QuorixConfig.cmake
  INSTALL_DESTINATION ${package_folder} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(QuorixConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/QuorixConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/QuorixConfigVersion.cmake
  DESTINATION ${package_folder})

set(pc_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH QUORIX_PREFIX_FROM_PC /${pc_folder} /)
# What the static library needs beside zlib.
if(UNIX)
  set(QUORIX_PRIVATE_LIBS -lm)
else()
  set(QUORIX_PRIVATE_LIBS "-lopengl32 -lgdi32")
endif()
configure_file(cmake/quorix.pc.in quorix.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/quorix.pc DESTINATION ${pc_folder})
