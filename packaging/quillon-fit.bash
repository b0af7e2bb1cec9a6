# Completion of quillon-fit for bash. Names of options come from the program's own --help, so that they are those
# of the program that is there.

_quillon_fit() {
    local program=$1 current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    # "=" parts words: of --option=VALUE the value is the current word, or nothing yet.
    if [ "$current" = "=" ]; then
        current=
    elif [ "$before" = "=" ]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
        # --graph KIND=FILE
        [[ $before == --* ]] || before=--file
    fi
    local words=
    case $before in
    --graph)
        words='data= function= overlay= residuals= residuals-y= residuals-r= species= species-fraction= mass-c= mass-r= speciation= figure= histogram: approach:'
        compopt -o nospace 2>/dev/null
        ;;
    --buffer)
        words='water NaCl= KCl= NH4Cl= MgCl2= CaCl2= Na2SO4= NaOAc= KOAc= NaH2PO4= Na2HPO4= KH2PO4= K2HPO4= urea= GuHCl= glycerol= sucrose='
        compopt -o nospace 2>/dev/null
        ;;
    --mass-of) words='data fit' ;;
    --mass-species) words='A B' ;;
    --figure-size) words='85 170' ;;
    --figure-panels) words='all sets' ;;
    --colors) words='safe classic' ;;
    --paper) words='a4 letter a4-landscape letter-landscape' ;;
    --report-graph) words='residuals overlay' ;;
    --cell | --cells | --wavelengths | --speeds | --ratios | --mass-points | --resample | --restarts | --rows | --disulfides | --temperature | --threads) return ;;
    --equilibrium-time)
        words='mass= speed= from= inner= outer= channel= vbar= density= viscosity= ratio= rest='
        compopt -o nospace 2>/dev/null
        ;;
    *)
        if [[ $current == --* ]]; then
            words=$("$program" --help 2>/dev/null | sed -n 's/^  \(--[a-z-]*\).*/\1/p')
        fi
        ;;
    esac
    if [ -n "$words" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    fi
    if [ ${#COMPREPLY[@]} -eq 0 ]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _quillon_fit quillon-fit
