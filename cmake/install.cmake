# Installing for consumers: the two libraries with versioned sonames, the
# public headers, a CMake package (find_package(fenkapi CONFIG) gives
# fenkapi::fenkapi and fenkapi::kivapit) and a pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS fenkapi kivapit EXPORT fenkapiTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES include/fenkapi.h include/kivapit.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/fenkapi DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h")
if(TARGET fenk)
  install(TARGETS fenk RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

set(FENKAPI_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/fenkapi)
install(EXPORT fenkapiTargets NAMESPACE fenkapi:: DESTINATION ${FENKAPI_CMAKE_DIR})
configure_package_config_file(cmake/fenkapiConfig.cmake.in
                              ${CMAKE_CURRENT_BINARY_DIR}/fenkapiConfig.cmake
                              INSTALL_DESTINATION ${FENKAPI_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/fenkapiConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/fenkapiConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/fenkapiConfigVersion.cmake
        DESTINATION ${FENKAPI_CMAKE_DIR})

# The pkg-config file finds its prefix relative to itself, so the package
# works wherever it is installed (cmake --install --prefix ...).
file(RELATIVE_PATH FENKAPI_PC_UP ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" FENKAPI_PC_UP "${FENKAPI_PC_UP}")
configure_file(cmake/fenkapi.pc.in ${CMAKE_CURRENT_BINARY_DIR}/fenkapi.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/fenkapi.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The consumer test installs into a scratch prefix and builds a small C
# program against the installed package, through CMake and through
# pkg-config, then runs both.
if(FENK_TESTS AND NOT FENK_SANITIZE)
  add_test(NAME consumer
           COMMAND ${CMAKE_COMMAND} -DBUILD_DIR=${CMAKE_BINARY_DIR}
                   -DSOURCE_DIR=${CMAKE_CURRENT_SOURCE_DIR}
                   -DC_COMPILER=${CMAKE_C_COMPILER}
                   -P ${CMAKE_CURRENT_SOURCE_DIR}/tests/consumer/run_consumer.cmake)
endif()
