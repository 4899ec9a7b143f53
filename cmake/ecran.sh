# Sourced by the scripts that run windows without a screen.

# sous_ecran COMMAND...: on a virtual screen of 1366x768, drawing in software, in a session of its own.
sous_ecran() {
    local session
    session=$(mktemp -d)
    XDG_RUNTIME_DIR=$session LIBGL_ALWAYS_SOFTWARE=1 xvfb-run -a -s "-screen 0 1366x768x24" "$@" ||
        { local statut=$?; rm -rf "$session"; return $statut; }
    rm -rf "$session"
}
