# Install rules and Debian packages, for the build machine's architecture or, in a
# cross build, the target's:
#   canbus-module  the plug-in, where a Qt host finds it, and the platform library it links
#   canbus-tools   canbus-host, canbox-sim, mcu-sim and canbus-replay in bin, the box scenarios in share
#   canbus-viewer  the window onto the module, where Qt's widgets were found (not in the ARM build)
# `cpack` in a build folder writes them (canbus-module_<version>_<arch>.deb, ...).

install(TARGETS canbusmodule LIBRARY DESTINATION ${CANBUS_INSTALL_PLUGIN_DIR} COMPONENT module)
install(TARGETS canbus_platform LIBRARY DESTINATION ${CANBUS_INSTALL_LIB_DIR} COMPONENT module)
install(TARGETS canbus-host canbox-sim mcu-sim canbus-replay RUNTIME DESTINATION bin COMPONENT tools)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/scenarios/ DESTINATION ${CANBUS_INSTALL_SCENARIO_DIR} COMPONENT tools)

# dpkg's name of the architecture the binaries are for, not the one cpack runs on.
if(CMAKE_CROSSCOMPILING AND CMAKE_LIBRARY_ARCHITECTURE STREQUAL "arm-linux-gnueabihf")
    set(CANBUS_DEB_ARCH armhf)
else()
    execute_process(COMMAND dpkg --print-architecture OUTPUT_VARIABLE CANBUS_DEB_ARCH
                    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME canbus)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "canbus maintainers <maintainers@canbus.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL module tools)
if(TARGET canbus-viewer)
    list(APPEND CPACK_COMPONENTS_ALL viewer)
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${CANBUS_DEB_ARCH})
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
# Stated rather than worked out by dpkg-shlibdeps, which knows only the libraries
# installed for the build machine's architecture and so fails in a cross build.
set(canbus_runtime_depends "libc6, libstdc++6, libgcc-s1, libqt5core5a (>= 5.11), libqt5serialport5 (>= 5.11)")

set(CPACK_DEBIAN_MODULE_PACKAGE_NAME canbus-module)
set(CPACK_COMPONENT_MODULE_DESCRIPTION
    "Vehicle-bus module of the head unit\n The Qt 5 plug-in that talks to a CAN box over a serial port in the\n vehicle protocols of its catalogue, with the desktop platform library.")
set(CPACK_DEBIAN_MODULE_PACKAGE_DEPENDS "${canbus_runtime_depends}")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME canbus-tools)
set(CPACK_COMPONENT_TOOLS_DESCRIPTION
    "Tools for the vehicle-bus module\n canbus-host runs the plug-in on a desktop; canbox-sim plays a CAN box and\n mcu-sim the microcontroller, on pseudo-terminals or serial devices; canbus-replay\n plays a capture of the line through any protocol.")
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "canbus-module (= ${PROJECT_VERSION}), ${canbus_runtime_depends}")

set(CPACK_DEBIAN_VIEWER_PACKAGE_NAME canbus-viewer)
set(CPACK_COMPONENT_VIEWER_DESCRIPTION
    "Window onto the vehicle-bus module\n canbus-viewer hosts the plug-in as canbus-host does and draws the climate,\n the doors, the radar, keys and prompts, with a panel that sends commands.")
set(CPACK_DEBIAN_VIEWER_PACKAGE_DEPENDS
    "canbus-module (= ${PROJECT_VERSION}), ${canbus_runtime_depends}, libqt5gui5 (>= 5.11), libqt5widgets5 (>= 5.11)")

include(CPack)
