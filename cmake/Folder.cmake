# A folder of the source tree as a library target whose headers can be included only by those that link it.
#
#   quillon_folder(models DEPENDS quillon_workspace)
#
# makes the target quillon_models from all .cpp files of the folder. Headers are included with the folder's
# name in front ("models/SEDEQ3.h"); each target exports a directory that holds nothing but a link to its
# own folder, so that a missing edge between two folders is an include that does not compile. FACE says that the
# folder has floors of its own below it in the tree, which are targets by themselves: then the directory holds
# links to the folder's own headers alone, and floors above it stay out of its reach.

function(quillon_export_folder target scope folder)
  set(root ${CMAKE_BINARY_DIR}/include/${target})
  get_filename_component(parent ${root}/${folder} DIRECTORY)
  if(IS_SYMLINK ${parent}) # of a build from before the folder was divided: it leads into the source tree
    file(REMOVE ${parent})
  endif()
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${root}/${folder} SYMBOLIC)
  target_include_directories(${target} ${scope} ${root})
endfunction()

function(quillon_export_headers target scope folder)
  set(root ${CMAKE_BINARY_DIR}/include/${target}/${folder})
  if(IS_SYMLINK ${root}) # of a build from before the folder had floors
    file(REMOVE ${root})
  endif()
  file(MAKE_DIRECTORY ${root})
  file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.h)
  foreach(header ${headers})
    get_filename_component(name ${header} NAME)
    file(CREATE_LINK ${header} ${root}/${name} SYMBOLIC)
  endforeach()
  target_include_directories(${target} ${scope} ${CMAKE_BINARY_DIR}/include/${target})
endfunction()

function(quillon_folder folder)
  cmake_parse_arguments(ARG "FACE" "NAME" "DEPENDS;EXCLUDE" ${ARGN})
  if(NOT ARG_NAME)
    set(ARG_NAME ${folder})
  endif()
  set(target quillon_${ARG_NAME})
  set(scope PUBLIC)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
  foreach(name ${ARG_EXCLUDE})
    list(REMOVE_ITEM sources ${PROJECT_SOURCE_DIR}/${folder}/${name})
  endforeach()
  if(sources)
    add_library(${target} STATIC ${sources})
    target_link_libraries(${target} PUBLIC ${ARG_DEPENDS} PRIVATE quillon_flags)
    quillon_precompile_folder(${target})
    if(QUILLON_PRECOMPILED_FOLDERS) # elsewhere each source of a folder is held to stand by itself
      quillon_together(${target})
    endif()
  else()
    set(scope INTERFACE)
    add_library(${target} INTERFACE)
    target_link_libraries(${target} INTERFACE ${ARG_DEPENDS})
  endif()
  if(ARG_FACE)
    quillon_export_headers(${target} ${scope} ${folder})
  else()
    quillon_export_folder(${target} ${scope} ${folder})
  endif()
endfunction()
