include(CMakePackageConfigHelpers)

# What every target of the project is built with. Source paths are given relative to the project, so that error reports
# name them the same way wherever it is built.
add_library(qtb_options INTERFACE)
target_compile_options(
  qtb_options
  INTERFACE -Wall
            -Wextra
            -Wshadow
            -Wconversion
            -Wnon-virtual-dtor
            -Woverloaded-virtual=1
            -Wpedantic
            -Wno-gnu-zero-variadic-macro-arguments
            -Werror
            -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_compile_options(qtb_options INTERFACE -Wno-overloaded-virtual -Wno-unknown-warning-option)
endif()
if(QTB_SANITIZE)
  target_compile_options(qtb_options INTERFACE -fsanitize=${QTB_SANITIZE} -fno-sanitize-recover=all
                                               -fno-omit-frame-pointer)
  target_link_options(qtb_options INTERFACE -fsanitize=${QTB_SANITIZE})
endif()

# qtb_add_library(NAME FOLDERS folder... [LINK target...] [PRIVATE_LINK target...] [PRIVATE_HEADERS])
# A shared library of all sources in the folders. The folders are its include path, so that headers are included by
# their names; with PRIVATE_HEADERS for its own sources and tests only.
function(qtb_add_library name)
  cmake_parse_arguments(ARG "PRIVATE_HEADERS" "" "FOLDERS;LINK;PRIVATE_LINK" ${ARGN})
  set(sources)
  foreach(folder IN LISTS ARG_FOLDERS)
    file(GLOB found CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h)
    list(APPEND sources ${found})
  endforeach()
  add_library(${name} SHARED ${sources})
  add_library(QTBModel::${name} ALIAS ${name})
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX VERSION ${PROJECT_VERSION}
                                           SOVERSION ${PROJECT_VERSION_MAJOR})
  foreach(folder IN LISTS ARG_FOLDERS)
    if(ARG_PRIVATE_HEADERS)
      target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/${folder})
      set_property(TARGET ${name} APPEND PROPERTY QTB_INTERNAL_INCLUDES ${CMAKE_CURRENT_SOURCE_DIR}/${folder})
    else()
      target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/${folder}>)
      install(
        DIRECTORY ${folder}/
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qtbmodel
        FILES_MATCHING
        PATTERN "*.h")
    endif()
  endforeach()
  target_include_directories(${name} PUBLIC $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/qtbmodel>)
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_link_libraries(
    ${name}
    PUBLIC ${ARG_LINK}
    PRIVATE ${ARG_PRIVATE_LINK} $<BUILD_INTERFACE:qtb_options>)
  install(TARGETS ${name} EXPORT QTBModelTargets DESTINATION ${CMAKE_INSTALL_LIBDIR})
endfunction()

# Installs the export set, so that other projects use find_package(QTBModel).
function(qtb_install_package)
  set(destination ${CMAKE_INSTALL_LIBDIR}/cmake/QTBModel)
  install(
    EXPORT QTBModelTargets
    NAMESPACE QTBModel::
    DESTINATION ${destination})
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/QTBModelConfig.cmake.in
                                ${PROJECT_BINARY_DIR}/QTBModelConfig.cmake INSTALL_DESTINATION ${destination})
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/QTBModelConfigVersion.cmake
                                   COMPATIBILITY SameMinorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/QTBModelConfig.cmake ${PROJECT_BINARY_DIR}/QTBModelConfigVersion.cmake
          DESTINATION ${destination})
endfunction()
