# What `cmake --install` gives: the component "runtime" is what programs need to run, "development" what
# they need to be built. The installed folder may be moved as a whole: nothing in it names a path
# outside.
include(CMakePackageConfigHelpers)

set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/toolbox)

install(TARGETS toolbox toolbox_static toolbox_resources EXPORT toolbox
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
                NAMELINK_COMPONENT development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(EXPORT toolbox NAMESPACE toolbox:: DESTINATION ${config_folder}
        FILE toolbox-targets.cmake COMPONENT development)

set(windows_only)
if(WIN32)
    # The compiler's run-time DLLs that toolbox.dll and programs of this compiler need.
    install(FILES ${TOOLBOX_RUNTIME_DLLS} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources
            DESTINATION ${CMAKE_INSTALL_DATADIR}/toolbox COMPONENT development)
else()
    foreach(name IN ITEMS attached_control bars canvas_device controls dialogs document_dialogs exchange graphics key_dialogs
                          meter pickers property_sheets tag_tools tools value_service
                          windowing detail/mouse_button)
        list(APPEND windows_only REGEX "/${name}[.]h$" EXCLUDE)
    endforeach()
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/toolbox
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development ${windows_only})

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/toolbox-config.cmake.in
    toolbox-config.cmake INSTALL_DESTINATION ${config_folder})
write_basic_package_version_file(toolbox-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/toolbox-config.cmake
              ${PROJECT_BINARY_DIR}/toolbox-config-version.cmake
        DESTINATION ${config_folder} COMPONENT development)

# The system's libraries that the static library needs, for pkg-config.
toolbox_system_libraries(TOOLBOX_SYSTEM_LIBRARIES)
list(JOIN TOOLBOX_SYSTEM_LIBRARIES " " TOOLBOX_SYSTEM_LIBRARIES)
# The prefix, as seen from the folder of toolbox.pc.
file(RELATIVE_PATH TOOLBOX_UP_TO_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
     ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" TOOLBOX_UP_TO_PREFIX ${TOOLBOX_UP_TO_PREFIX})
configure_file(${CMAKE_CURRENT_LIST_DIR}/toolbox.pc.in toolbox.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/toolbox.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
