# add_version_resource(TARGET FILE_NAME FILE_TYPE DESCRIPTION): adds the version information that Windows
# shows. The version is the project's, so that all programs have the same one.
function(add_version_resource target file_name file_type description)
  cmake_path(GET file_name STEM internal_name)
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
  configure_file(${CMAKE_SOURCE_DIR}/cmake/version_resource.rc.in ${resource} @ONLY)
  target_sources(${target} PRIVATE ${resource})
endfunction()
