#!/usr/bin/env bash
# Shows that check_includes.sh passes a sound tree and finds each kind of fault in a broken copy of it.
set -euo pipefail
check=$(realpath "$(dirname "${BASH_SOURCE[0]}")/check_includes.sh")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failures=0

sound_tree() {
  rm -rf "$scratch/tree"
  mkdir -p "$scratch/tree"/{platform,shell,editor,app}
  cd "$scratch/tree"
  echo '#include <string>' >platform/text.h
  echo '#include "platform/text.h"' >platform/text.cpp
  printf '#include "platform/text.h"\n#include <QWidget>\n' >platform/box.h
  echo '#include "platform/box.h"' >platform/box.cpp
  printf '#include "text.h"\n// #include <QString>\n' >platform/deep.h
  printf '#include "platform/deep.h"\n' >shell/list.h
  printf '#include "shell/list.h"\n#include <vector>\n' >shell/list.cpp
  printf '#include "platform/box.h"\n#include "shell/list.h"\n' >shell/window.h
  echo '#include "shell/window.h"' >shell/window.cpp
  echo '#include "platform/text.h"' >editor/scan.cpp
  echo 'class Host;' >editor/host.h
  printf '#include "shell/window.h"\n#include "platform/box.h"\n' >app/main.cpp
  printf '%s\t%s\n' platform_rules platform/text.cpp platform_windows platform/box.cpp shell_rules shell/list.cpp \
    shell_windows shell/window.cpp editor_rules editor/scan.cpp blockhouse app/main.cpp >targets
}

# expect <what the check should say, or nothing> <what was done to the tree>
expect() {
  local said status=0
  said=$("$check" . targets 2>&1) || status=$?
  if [[ -z $1 ]]; then
    ((status == 0)) && [[ -z $said ]] && return
  else
    ((status != 0)) && [[ $said == *"$1"* ]] && return
  fi
  echo "$2: status $status, said '$said', expected '$1'"
  failures=$((failures + 1))
}

sound_tree
expect '' 'a sound tree'

sound_tree
echo '#include <QString>' >>shell/list.cpp
expect 'rules include Qt: shell/list.cpp -> <QString>' 'Qt in a rules source'

sound_tree
echo '  #  include <QtCore/QString>' >>platform/deep.h
expect 'rules include Qt: shell/list.cpp -> shell/list.h -> platform/deep.h -> <QtCore/QString>' 'Qt two headers down'

sound_tree
echo '#include <Qsci/qsciscintillabase.h>' >>platform/text.h
expect 'rules include Qt' 'QScintilla in a header of a rules source'

sound_tree
echo 'class QWidget;' >platform/box.h
echo '#include "platform/box.h"' >>editor/scan.cpp
expect 'rules include windows: editor/scan.cpp -> platform/box.h' 'a windows header without Qt in a rules source'

sound_tree
echo '#include "editor/host.h"' >>platform/box.cpp
expect 'wrong direction: platform/box.cpp includes editor/host.h' 'platform including another folder'

sound_tree
echo '#include "../editor/host.h"' >>shell/window.cpp
expect 'include with dots in its path: shell/window.cpp includes ../editor/host.h' 'a way around the folders'

sound_tree
echo '#include "editor/host.h"' >>shell/window.cpp
expect 'wrong direction: shell/window.cpp includes editor/host.h' 'two folders side by side'

sound_tree
mkdir -p platform/system/posix
echo 'int descriptor();' >platform/system/posix/descriptor.h
echo '#include "platform/system/posix/descriptor.h"' >platform/system/posix/files.cpp
expect '' 'the files of one operating system among themselves'
echo '#include "platform/system/posix/descriptor.h"' >>platform/text.cpp
expect 'one operating system only: platform/text.cpp includes' 'a neutral file with one operating system'"'"'s header'

sound_tree
mkdir -p platform/text platform/widgets
echo '#include "platform/text/paths.h"' >platform/widgets/box.h
touch platform/text/paths.h
expect '' 'a room of platform including one below it'
echo '#include "platform/widgets/box.h"' >>platform/text/paths.h
expect 'wrong direction: platform/text/paths.h includes platform/widgets/box.h' 'a room including one above it'

sound_tree
echo '#include "app/parts.h"' >>shell/window.cpp
touch app/parts.h
expect 'wrong direction: shell/window.cpp includes app/parts.h' 'a folder including the program'

sound_tree
echo '#include "shell/window.h"' >>shell/list.h
expect 'include cycle' 'two headers including one another'

sound_tree
echo '#include "box.h"' >>platform/box.h
expect 'platform/box.h -> platform/box.h' 'a header including itself'

sound_tree
rm editor/scan.cpp
expect 'a rules source that is not there: editor/scan.cpp' 'a list that does not fit the tree'

sound_tree
sed -i '/_rules/d' targets
expect 'the target list names no rules source' 'a list without rules'

exit $((failures > 0))
