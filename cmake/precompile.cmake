# With GAUGEWELL_PRECOMPILE the headers of Qt Widgets are parsed once for all forms and once for all tests of forms, which
# nearly halves the time to compile them. Presets without it notice a missing include.
option(GAUGEWELL_PRECOMPILE "Precompile the headers of Qt" OFF)

# gaugewell_precompiled(NAME LIBRARIES... HEADERS HEADERS...): makes precompiled headers for targets that link the
# libraries. A target that uses them may define more than these libraries do, but nothing that the headers ask for.
function(gaugewell_precompiled name)
  cmake_parse_arguments(PARSE_ARGV 1 with "" "" "HEADERS")
  file(CONFIGURE OUTPUT ${name}.cpp CONTENT "")
  add_library(${name} OBJECT EXCLUDE_FROM_ALL ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE gaugewell_flags ${with_UNPARSED_ARGUMENTS})
  target_precompile_headers(${name} PRIVATE
    <algorithm> <cmath> <functional> <map> <memory> <optional> <set> <vector> ${with_HEADERS})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
endfunction()

# gaugewell_precompile(HEADERS TARGETS...)
function(gaugewell_precompile headers)
  if(GAUGEWELL_PRECOMPILE)
    foreach(target ${ARGN})
      target_precompile_headers(${target} REUSE_FROM ${headers})
    endforeach()
  endif()
endfunction()

gaugewell_precompiled(gaugewell_formheaders Qt6::Widgets HEADERS
  <QAbstractTableModel> <QAction> <QApplication> <QCheckBox> <QClipboard> <QComboBox> <QContextMenuEvent> <QDate> <QDialog>
  <QDir> <QElapsedTimer> <QFile> <QFileInfo> <QGroupBox> <QHash> <QHeaderView> <QLabel> <QLineEdit> <QListWidget>
  <QMainWindow> <QMdiArea> <QMdiSubWindow> <QMenu> <QMimeData> <QPainter> <QPointer> <QProcess> <QPushButton>
  <QRadioButton> <QRegularExpression> <QSaveFile> <QStyle> <QTextBrowser> <QTextEdit> <QTimer> <QToolBar> <QToolButton>
  <QTreeView> <QUrl> <QVBoxLayout>)
