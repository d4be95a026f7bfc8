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
            -Wpedantic
            -Wno-gnu-zero-variadic-macro-arguments
            -Werror
            -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=
            # Nobody replaces a function of these libraries from outside, so they may call their own directly.
            -fno-semantic-interposition
            -fno-plt)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # False alarms of this compiler: overlapping copies inside std::string::insert and operator+, use of a counted block
  # after its last reference went.
  target_compile_options(qtb_options INTERFACE -Wno-restrict -Wno-use-after-free)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_compile_options(qtb_options INTERFACE -Wno-unknown-warning-option)
endif()
if(QTB_SANITIZE)
  target_compile_options(qtb_options INTERFACE -fsanitize=${QTB_SANITIZE} -fno-sanitize-recover=all
                                               -fno-omit-frame-pointer)
  target_link_options(qtb_options INTERFACE -fsanitize=${QTB_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Instrumented code of the standard library looks uninitialized to this compiler.
    target_compile_options(qtb_options INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
if(QTB_BUILD_FUZZERS)
  # Lets libFuzzer see which code an input reaches.
  target_compile_options(qtb_options INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(qtb_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# qtb_add_library(NAME FOLDERS folder... [LINK target...] [PRIVATE_LINK target...] [PUBLIC_HEADERS header...])
# A shared library of all sources in the folders. The folders are its include path, so that headers are included by
# their names. All headers are public and installed, unless PUBLIC_HEADERS names those that are. The objects are a
# target of their own (NAME_objects) for tests that reach what the library hides.
function(qtb_add_library name)
  cmake_parse_arguments(ARG "" "" "FOLDERS;LINK;PRIVATE_LINK;PUBLIC_HEADERS" ${ARGN})
  set(sources)
  set(headers)
  set(folders)
  foreach(folder IN LISTS ARG_FOLDERS)
    file(GLOB found_sources CONFIGURE_DEPENDS ${folder}/*.cpp)
    file(GLOB found_headers CONFIGURE_DEPENDS ${folder}/*.h)
    list(APPEND sources ${found_sources})
    list(APPEND headers ${found_headers})
    list(APPEND folders ${CMAKE_CURRENT_SOURCE_DIR}/${folder})
  endforeach()

  add_library(${name}_objects OBJECT ${sources} ${headers})
  set_target_properties(${name}_objects PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_include_directories(${name}_objects PUBLIC ${folders})
  target_compile_features(${name}_objects PUBLIC cxx_std_20)
  target_link_libraries(
    ${name}_objects
    PUBLIC ${ARG_LINK}
    PRIVATE ${ARG_PRIVATE_LINK} qtb_options)

  add_library(${name} SHARED $<TARGET_OBJECTS:${name}_objects>)
  add_library(QTBModel::${name} ALIAS ${name})
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX VERSION ${PROJECT_VERSION}
                                           SOVERSION ${PROJECT_VERSION_MAJOR})
  target_include_directories(${name} PUBLIC "$<BUILD_INTERFACE:${folders}>"
                                            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/qtbmodel>)
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_link_libraries(
    ${name}
    PUBLIC ${ARG_LINK}
    PRIVATE ${ARG_PRIVATE_LINK} $<BUILD_INTERFACE:qtb_options>)

  if(ARG_PUBLIC_HEADERS)
    set(headers ${ARG_PUBLIC_HEADERS})
  endif()
  install(FILES ${headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qtbmodel)
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
