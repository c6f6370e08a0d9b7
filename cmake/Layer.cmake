# The layers point one way. This table says which layer may use which; velmor_layer() refuses anything else, and
# a layer's include root holds links to the allowed folders alone, so a forbidden #include does not compile.

set(VELMOR_LAYERS platform image sound xsheet render scene acquire)
if(VELMOR_WINDOW)
  list(APPEND VELMOR_LAYERS views)
endif()
set(VELMOR_MAY_USE_platform "")
set(VELMOR_MAY_USE_image platform)
set(VELMOR_MAY_USE_sound platform)
set(VELMOR_MAY_USE_xsheet platform image sound)
set(VELMOR_MAY_USE_render platform image sound xsheet)
set(VELMOR_MAY_USE_scene platform image sound xsheet render)
set(VELMOR_MAY_USE_acquire platform image)
set(VELMOR_MAY_USE_views platform image sound xsheet render scene acquire)

# Makes the include root `root` with a link for each of the named layers.
function(velmor_include_root root)
  file(MAKE_DIRECTORY ${root})
  foreach(layer IN LISTS ARGN)
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${layer} ${root}/${layer} SYMBOLIC)
  endforeach()
endfunction()

# velmor_layer(<name> [USES <layer>...] [HIDES <target>...] [SHOWS <target>...])
# Declares the static library velmor_<name> of all sources in the current folder. USES names the layers below
# that it needs, HIDES the outside libraries whose headers no other layer may include, SHOWS those that its own
# headers speak of.
function(velmor_layer name)
  cmake_parse_arguments(LAYER "" "" "USES;HIDES;SHOWS" ${ARGN})
  if(NOT name IN_LIST VELMOR_LAYERS)
    message(FATAL_ERROR "${name} is not a layer; the layers are: ${VELMOR_LAYERS}")
  endif()
  foreach(used IN LISTS LAYER_USES)
    if(NOT used IN_LIST VELMOR_MAY_USE_${name})
      message(FATAL_ERROR "Layer ${name} may not use ${used}")
    endif()
  endforeach()

  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  add_library(velmor_${name} STATIC ${sources})
  set(root ${PROJECT_BINARY_DIR}/include/${name})
  velmor_include_root(${root} ${name} ${LAYER_USES})
  target_include_directories(velmor_${name} PRIVATE ${root})
  foreach(used IN LISTS LAYER_USES)
    target_link_libraries(velmor_${name} PUBLIC velmor_${used})
  endforeach()
  target_link_libraries(velmor_${name} PRIVATE ${LAYER_HIDES} PUBLIC ${LAYER_SHOWS} Threads::Threads)
endfunction()

# velmor_program_library(<name> <source>... TOP <layer> [HIDES <target>...])
# What a program is made of besides its main.cpp, as a library that tests can link. It may use every layer, sees
# itself as app/, and links TOP, the highest layer that it stands on.
function(velmor_program_library name)
  cmake_parse_arguments(PROGRAM "" "TOP" "HIDES" ${ARGN})
  set(sources ${PROGRAM_UNPARSED_ARGUMENTS})
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  add_library(${name} STATIC ${sources})
  set(root ${PROJECT_BINARY_DIR}/include/app)
  velmor_include_root(${root} app ${VELMOR_LAYERS})
  target_include_directories(${name} PUBLIC ${root})
  target_link_libraries(${name} PRIVATE ${PROGRAM_HIDES} PUBLIC velmor_${PROGRAM_TOP})
endfunction()

# velmor_layer_tests(<name> [LINKS <target>...])
# The tests of a layer see that layer and what it may use, nothing more.
function(velmor_layer_tests name)
  cmake_parse_arguments(TESTS "" "" "LINKS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${name} ${sources})
  set(root ${PROJECT_BINARY_DIR}/include/test_${name})
  velmor_include_root(${root} ${name} ${VELMOR_MAY_USE_${name}})
  target_include_directories(test_${name} PRIVATE ${root} ${PROJECT_SOURCE_DIR}/tests/support)
  # What has a main function of its own stands before GoogleTest's.
  target_link_libraries(test_${name} PRIVATE velmor_${name} ${TESTS_LINKS} GTest::gtest_main)
  gtest_discover_tests(test_${name} PROPERTIES TIMEOUT 120 DISCOVERY_TIMEOUT 60)
endfunction()
