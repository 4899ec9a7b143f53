# Sourced by the scripts at the root: installs the packages of cmake/paquets-debian.txt that are missing.

# installe_paquets USE...: those of the given uses. Says what it does; works as root or through sudo.
installe_paquets() {
    local manquants=() paquet usage sudo=()
    while read -r paquet usage; do
        case "$paquet" in '' | '#'*) continue ;; esac
        [[ " $* " == *" $usage "* ]] || continue
        dpkg-query -W -f='${Status}' "$paquet" 2>/dev/null | grep -q 'ok installed' || manquants+=("$paquet")
    done <cmake/paquets-debian.txt
    ((${#manquants[@]})) || return 0
    echo "Paquets manquants : ${manquants[*]}"
    if ! command -v apt-get >/dev/null; then
        echo "apt-get n'existe pas ici : installez ces paquets (ou leurs équivalents) vous-même." >&2
        return 1
    fi
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            echo "Relancez en tant que root, ou installez-les : apt-get install ${manquants[*]}" >&2
            return 1
        fi
        sudo=(sudo)
    fi
    echo "Installation avec apt-get${sudo:+ (par sudo)}..."
    "${sudo[@]}" apt-get update -q
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${manquants[@]}"
}
