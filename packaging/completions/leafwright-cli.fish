# Completion of leafwright-cli for fish.
#
# The program is asked for its commands and options, so that both are always those of the installed version.

# Prints the commands, with what each does.
function __leafwright_cli_commands
    LC_ALL=C $argv --help 2>/dev/null | string replace -rf '^  ([a-z]+) +(.*)$' '$1\t$2'
end

# Prints the options of a command.
function __leafwright_cli_options
    set -l help (LC_ALL=C $argv --help 2>/dev/null)
    string replace -rf '^  (-[a-z]), .*' '$1' -- $help
    string replace -rf '^  (?:-[a-z], )?(--[a-z-]+).*' '$1' -- $help
end

# Prints folders, and PDF files.
function __leafwright_cli_pdfs
    __fish_complete_path (commandline -ct) | string match -rei '(?:/|\.pdf)(?:\t|$)'
end

# Prints what the last word may become.
function __leafwright_cli_offer
    set -l words (commandline -opc)
    set -l last (commandline -ct)
    if not set -q words[2]
        __leafwright_cli_commands $words[1]
        printf '%s\n' --help --version
        return
    end
    switch $words[-1]
        case --format
            test $words[2] = apply; or echo text
            printf '%s\n' json plus markdown html opml pdftk cpdf pdfcpu
        case --out-dir
            __fish_complete_directories $last ''
        case --jobs --max-depth --memory --ocr-language --page --text --timeout
        case --csv --html --log --map --save-map --report
            __fish_complete_path $last
        case -o --output
            __leafwright_cli_pdfs
        case '*'
            switch $words[2]:$last
                case '*:-*'
                    __leafwright_cli_options $words[1..2]
                case 'apply:*' 'report:*' 'run:*'
                    __fish_complete_path $last
                case 'batch:*'
                    printf '%s\n' apply autotoc contents fonts info outline run
                case '*'
                    __leafwright_cli_pdfs
            end
    end
end

complete -c leafwright-cli -f -a '(__leafwright_cli_offer)'
