# Completion of leafwright-cli for bash.        -*- shell-script -*-
#
# The program is asked for its commands and options, so that both are always those of the installed version.

# Prints the words at the start of the indented lines of a help text: commands, or options.
_leafwright_cli_words() {
    LC_ALL=C "$@" --help 2>/dev/null | sed -n 's/^  \([a-z-][A-Za-z-]*\)\(, \(--[a-z-]*\)\)\{0,1\}.*/\1 \3/p'
}

# _leafwright_cli_offer COMPGEN-OPTION...: what compgen finds becomes the offer, a line each.
_leafwright_cli_offer() {
    mapfile -t COMPREPLY < <(compgen "$@" -- "${COMP_WORDS[COMP_CWORD]}")
}

_leafwright_cli_files() {
    compopt -o filenames 2>/dev/null
    _leafwright_cli_offer -f
}

# Folders, and PDF files.
_leafwright_cli_pdfs() {
    _leafwright_cli_files
    local path kept=()
    for path in "${COMPREPLY[@]}"; do
        [[ -d $path || ${path,,} == *.pdf ]] && kept+=("$path")
    done
    COMPREPLY=("${kept[@]}")
}

_leafwright_cli() {
    local program=${COMP_WORDS[0]} command=${COMP_WORDS[1]}
    if ((COMP_CWORD == 1)); then
        _leafwright_cli_offer -W "$(_leafwright_cli_words "$program") --help --version"
        return
    fi
    case ${COMP_WORDS[COMP_CWORD - 1]} in
        --format)
            local text=text
            [[ $command == apply ]] && text=
            _leafwright_cli_offer -W "json plus $text markdown html opml pdftk cpdf pdfcpu"
            ;;
        --out-dir) compopt -o filenames 2>/dev/null; _leafwright_cli_offer -d ;;
        --jobs | --max-depth | --memory | --ocr-language | --page | --text | --timeout) COMPREPLY=() ;;
        --csv | --html | --log | --map | --save-map | --report) _leafwright_cli_files ;;
        -o | --output) _leafwright_cli_pdfs ;;
        *)
            case $command:${COMP_WORDS[COMP_CWORD]} in
                *:-*) _leafwright_cli_offer -W "$(_leafwright_cli_words "$program" "$command")" ;;
                apply:* | report:* | run:*) _leafwright_cli_files ;;
                batch:*) _leafwright_cli_offer -W "apply autotoc contents fonts info outline run" ;;
                *) _leafwright_cli_pdfs ;;
            esac
            ;;
    esac
}

complete -F _leafwright_cli leafwright-cli
