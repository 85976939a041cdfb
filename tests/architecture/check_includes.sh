#!/usr/bin/env bash
# Holds the source tree against the rules its folders live by.
#
#   check_includes.sh <root> <target list>
#
# The target list is written by the build: one "target<TAB>source" line, relative to the root, for each source of
# each library or program. From it follow the folders (where rules and windows libraries have their sources) and
# which sources are text rules. Then:
#   - what a rules source includes, directly or not, is no Qt header and belongs to no windows source;
#   - a folder includes itself and platform only; platform includes itself only; app includes any folder;
#   - inside platform, text includes nothing else, system includes text, widgets those two, and richtext all of them;
#   - what is written for one operating system (platform/system/<system>/) is included only from beside it;
#   - no header includes itself by a detour.
set -euo pipefail
export LC_ALL=C

root=${1:?the source tree is missing}
list=$(realpath "${2:?the target list is missing}")
cd "$root"

mapfile -t folders < <(awk -F'\t' '$1 ~ /_(rules|windows)$/ { sub(/\/.*/, "", $2); print $2 }' "$list" | sort -u)
((${#folders[@]} > 0)) || {
  echo "the target list names no rules or windows library"
  exit 1
}
[[ ! -d app ]] || folders+=(app)

find "${folders[@]}" -type f \( -name '*.h' -o -name '*.cpp' \) | sort |
  { xargs -d '\n' grep -HnE '^[[:space:]]*#[[:space:]]*include' -- /dev/null || (($? == 123)); } |
  awk -F'\t' -v folders="${folders[*]}" '
    # The target list comes first, then the include lines, "file:line:#include ...", on the standard input.
    function complain(text) { print text; bad = 1 }

    function folder_of(path) { sub(/\/.*/, "", path); return path }

    # "" for headers that are not ours.
    function resolve(name, from) {
      if (name in known) return name
      sub(/[^\/]*$/, "", from)
      return (from name) in known ? from name : ""
    }

    function is_qt(name) { return name ~ /^(Q[A-Za-z]|Qsci\/)/ || name ~ /\/Q[A-Z]/ }

    # The height of a room of platform; 0 for everything else.
    function height(path) {
      if (path !~ /^platform\/[^\/]+\//) return 0
      split(path, part, "/")
      return index("text    system  widgets richtext", part[2])
    }

    function walk_rules(file, path,   i) {
      if (file in walked) return
      walked[file] = 1
      if (file in windows_file) complain("rules include windows: " path)
      for (i = 1; i <= outside_count[file]; i++)
        if (is_qt(outside[file, i])) complain("rules include Qt: " path " -> <" outside[file, i] ">")
      for (i = 1; i <= inside_count[file]; i++)
        walk_rules(inside[file, i], path " -> " inside[file, i])
    }

    function walk_cycles(file, path,   i, next_file) {
      state[file] = "open"
      for (i = 1; i <= inside_count[file]; i++) {
        next_file = inside[file, i]
        if (state[next_file] == "open") complain("include cycle: " path " -> " next_file)
        else if (state[next_file] == "") walk_cycles(next_file, path " -> " next_file)
      }
      state[file] = "done"
    }

    NR == FNR {
      if ($1 ~ /_rules$/) rules_source[$2] = 1
      if ($1 ~ /_windows$/) {
        windows_file[$2] = 1
        header = $2
        if (sub(/\.cpp$/, ".h", header)) windows_file[header] = 1
      }
      next
    }

    {
      line = $0
      file = line; sub(/:.*/, "", file)
      sub(/^[^:]*:[^:]*:[^<"]*/, "", line)
      name = substr(line, 2); sub(/[>"].*$/, "", name)
      count++
      include_file[count] = file
      include_name[count] = name
    }

    END {
      listing = "find " folders " -type f"
      while ((listing | getline file) > 0) known[file] = 1
      for (n = 1; n <= count; n++) {
        file = include_file[n]
        if (include_name[n] ~ /(^|\/)\.\.?\//) complain("include with dots in its path: " file " includes " include_name[n])
        target = resolve(include_name[n], file)
        if (target == "") { outside[file, ++outside_count[file]] = include_name[n]; continue }
        inside[file, ++inside_count[file]] = target
        from = folder_of(file); to = folder_of(target)
        if (from != to && from != "app" && (from == "platform" || to != "platform"))
          complain("wrong direction: " file " includes " target)
        if (height(file) && height(file) < height(target))
          complain("wrong direction: " file " includes " target)
        twin = target
        if (twin ~ /^platform\/system\/[^\/]+\// && sub(/[^\/]*$/, "", twin) && index(file, twin) != 1)
          complain("one operating system only: " file " includes " target)
      }
      for (file in rules_source) {
        if (!(file in known)) complain("a rules source that is not there: " file)
        else { rules_seen++; walk_rules(file, file) }
      }
      if (!rules_seen) complain("the target list names no rules source")
      for (file in known) if (state[file] == "") walk_cycles(file, file)
      exit bad
    }' "$list" -
