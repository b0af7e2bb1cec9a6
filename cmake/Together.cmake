# Sources of a folder compiled eight at a time: what they share, headers and templates, is then read and built once.
# A fresh test builds everything two times over; there it takes a third of the time for tests, half for folders. For
# work on a folder it is off: a change would compile its neighbours too, and a source that forgets a header is
# found only by itself.
option(QUILLON_TOGETHER "Compile the sources of a folder eight at a time" OFF)

# Those that have a name of their own which a neighbour has too ("redefinition" or "shadows" tells of one that is
# missing here).
set(quillon_apart
    models/table/ModelTable.cpp models/table/SpeciesList.cpp
    tests/fit/Robustness.cpp
    tests/graphs/FigureTest.cpp tests/graphs/GraphWindowsTest.cpp)
list(TRANSFORM quillon_apart PREPEND ${PROJECT_SOURCE_DIR}/)

# quillon_together(TARGET): asked by the folder that makes the target.
function(quillon_together target)
  if(NOT QUILLON_TOGETHER)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
  set_source_files_properties(${quillon_apart} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
