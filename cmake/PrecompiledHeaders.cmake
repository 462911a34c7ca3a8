# In the daily build and under the address sanitizer, what most sources with widgets include is parsed once. The other
# builds do without, so a source that lacks an include fails there.
function(padscope_add_precompiled_headers)
    file(TOUCH ${PROJECT_BINARY_DIR}/headers.cpp)
    add_library(padscope_headers OBJECT ${PROJECT_BINARY_DIR}/headers.cpp)
    target_link_libraries(padscope_headers PRIVATE padscope_options Qt5::Widgets)
    target_precompile_headers(padscope_headers PRIVATE
        <algorithm> <functional> <memory> <optional> <string> <vector>
        <QAction> <QApplication> <QCheckBox> <QComboBox> <QDir> <QElapsedTimer> <QFile> <QHBoxLayout> <QHeaderView>
        <QLabel> <QLineEdit> <QMenu> <QPainter> <QPointer> <QSettings> <QSlider> <QSpinBox> <QStandardItemModel>
        <QStyledItemDelegate> <QTabWidget> <QTime> <QTimer> <QTreeView> <QVBoxLayout>)
endfunction()

if(CMAKE_BUILD_TYPE STREQUAL "Debug" AND NOT PADSCOPE_SANITIZE MATCHES "thread" AND NOT PADSCOPE_COVERAGE AND NOT PADSCOPE_FUZZ)
    set(PADSCOPE_PRECOMPILES_HEADERS ON)
endif()

# The same for headers of one target's own.
#   padscope_precompile_own_headers(TARGET HEADER...)
function(padscope_precompile_own_headers TARGET)
    if(PADSCOPE_PRECOMPILES_HEADERS)
        target_precompile_headers(${TARGET} PRIVATE ${ARGN})
    endif()
endfunction()

#   padscope_precompile_headers(TARGET...)
function(padscope_precompile_headers)
    if(NOT PADSCOPE_PRECOMPILES_HEADERS)
        return()
    endif()
    if(NOT TARGET padscope_headers)
        padscope_add_precompiled_headers()
    endif()
    foreach(target ${ARGN})
        target_precompile_headers(${target} REUSE_FROM padscope_headers)
    endforeach()
endfunction()
