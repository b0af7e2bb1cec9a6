# Headers that nearly every source reads, read once: three quarters of the time of compiling a test went into
# them, a third of that of compiling any other source. The folders go without unless asked: behind a precompiled
# header g++ 12 has cried at sound code of the library's strings, and a source that forgets a header
# is found.
option(QUILLON_PRECOMPILED "Read common headers of tests and windows once" ON)
option(QUILLON_PRECOMPILED_FOLDERS "Read common headers of all folders once" OFF)

set(quillon_common_headers <algorithm> <array> <cmath> <cstdint> <cstdio> <cstdlib> <functional> <limits> <map>
    <memory> <optional> <set> <stdexcept> <string> <string_view> <utility> <vector>)
set(quillon_test_headers ${quillon_common_headers} <filesystem> <fstream> <random> <sstream> <gtest/gtest.h>)
set(quillon_toolkit_headers <QApplication> <QCheckBox> <QClipboard> <QComboBox> <QDialog> <QFile> <QHeaderView>
    <QImage> <QKeyEvent> <QLabel> <QLineEdit> <QListWidget> <QMainWindow> <QMenu> <QMenuBar> <QPainter> <QPushButton>
    <QScreen> <QScrollArea> <QTableWidget> <QTimer>)

# quillon_precompile(TARGET HEADER...): the headers are precompiled for this target alone.
function(quillon_precompile target)
  if(QUILLON_PRECOMPILED)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# quillon_precompile_once(NAME FLAGS... HEADERS...): headers for all targets with the same flags.
function(quillon_precompile_once name)
  cmake_parse_arguments(ARG "" "" "FLAGS;LINK;HEADERS" ${ARGN})
  if(NOT QUILLON_PRECOMPILED)
    return()
  endif()
  set(source ${PROJECT_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "// Nothing: the headers are built with it.\n")
  add_library(${name} OBJECT ${source})
  target_link_libraries(${name} PRIVATE quillon_flags ${ARG_LINK})
  target_compile_options(${name} PRIVATE ${ARG_FLAGS})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

# quillon_use_precompiled(TARGET NAME): those of quillon_precompile_once.
function(quillon_use_precompiled target name)
  if(QUILLON_PRECOMPILED)
    target_precompile_headers(${target} REUSE_FROM ${name})
  endif()
endfunction()

# What all folders read. Made by the first folder that asks.
function(quillon_precompile_folder target)
  if(NOT QUILLON_PRECOMPILED_FOLDERS)
    return()
  endif()
  if(NOT TARGET quillon_common_headers)
    quillon_precompile_once(quillon_common_headers HEADERS ${quillon_common_headers})
  endif()
  quillon_use_precompiled(${target} quillon_common_headers)
endfunction()
