# What korvane_gen does for Tcl: lists and dictionaries, named mistakes, nothing lost and nothing leaked.
#
#     tcl_test.tcl BUILD ROOT        ROOT is a copy of the example suite

lassign $argv build root
set argv {}
lappend auto_path $build/tcl
package require tcltest
package require korvane_gen
namespace import tcltest::test
set project $root/project
encoding system utf-8

# The result and the error code of a script that fails.
proc failure {script} {
    if {![catch {uplevel 1 $script} message options]} {
        return "no error: $message"
    }
    list $message [dict get $options -errorcode]
}
proc failed_with {script} {
    catch {uplevel 1 $script} message options
    return $options
}
proc pick {rows args} {
    lmap row $rows {lmap key $args {dict get $row $key}}
}

test start-1 "what needs the installation says so before the start" {
    failure {gen find a}
} {{this needs "gen start"} {KORVANE NOT_STARTED}}
test start-2 "a missing root" {
    list [failure {gen start -root /no/such}] [failure {gen start -root /etc/passwd}]
} {{{there is no such installation} {KORVANE NOT_FOUND}} {{there is no such installation} {KORVANE NOT_FOUND}}}
test start-2a "there is nothing to end before the start" {
    failure {gen finish}
} {{this needs "gen start"} {KORVANE NOT_STARTED}}
test start-3 "the environment has a root" -body {
    set ::env(KORVANE_ROOTDIR) $root
    gen start
    dict get [gen where] installation_root
} -result $root/
test start-4 "another root is refused" {
    failure {gen start -root /}
} {{root is another one than the process has started with} {KORVANE ARGUMENT root}}
test start-5 "the installation" {
    set found [gen installation]
    list [dict get $found device_files] [llength [dict get $found libraries]] \
        [string range [gen library 2] [string length $root] end]
} {{allycore.ddb prismo2.ddb} 29 /libraries/vhdl/}
test start-6 "an internal error has condition, source and line" -body {
    failure {gen library 29}
} -match glob -result {{type < GEN_LIB_SIZE} {KORVANE INTERNAL {{condition {type < GEN_LIB_SIZE} source gen_path line *}} *}}

cd $project
gen project -project $project -db db -project-libs lib -user-libs "../home/ada/lib; /nowhere"

test find-1 "files are paths, and nothing is empty" {
    list [gen find adder.v] [gen find nothing.v] [gen find -eda cells.v]
} [list $project/adder.v {} $root/eda/mentor/cells.v]
test find-2 "what is shadowed" {
    pick [gen find -all adder.v] standing group
} {{wins project} {shadowed database} {shadowed {project libraries}} {shadowed {user libraries}} {shadowed parablocks} {shadowed {shipped libraries}}}
test find-3 "every check in order" {
    set asked [gen find -trace mux.sv]
    list [dict get [lindex $asked end] there] [expr {1 in [lmap row [lrange $asked 0 end-1] {dict get $row there}]}]
} {1 0}
test find-4 "includes" {
    list [gen include -from inc/display.vh -alias /copy/display.vh -beside beside segments.vh] $beside \
        [gen include segments.vh]
} {inc/segments.vh /copy/segments.vh {}}
test find-5 "sources" {
    list [pick [gen sources counter] type] [gen sources nothing]
} {{kbd vhd v edf sv} {}}
test find-6 "the cache keeps what was not there" -body {
    set found [gen cached late.v]
    close [open late.v w]
    lappend found [gen cached late.v] [gen cache size] [gen find -cached late.v]
    gen cache clear
    lappend found [gen cached late.v]
} -cleanup {file delete late.v} -result [list {} 1 {} $project/late.v]
test find-7 "names in UTF-8 come back" -body {
    close [open gr\u00f6\u00dfe.v w]
    set found [gen find gr\u00f6\u00dfe.v]
    list [file exists $found] [expr {[gen find $found] eq $found}]
} -cleanup {file delete $found} -result {1 1}
test find-8 "names of any bytes come back" -body {
    exec sh -c {: >"$(printf 'caf\351.v')"}
    set found [gen find caf\udce9.v]
    list [string equal $found $project/caf\udce9.v] [string equal [gen find $found] $found] \
        [string equal [gen cached [lindex [list $found x] 0]] $found]
} -cleanup {exec sh -c {rm "$(printf 'caf\351.v')"}} -result {1 1 1}
# The characters U+1F480 and U+1F600: Tcl holds them in two halves, of which the second is among U+DC80 to U+DCFF in
# the first only.
set skull [encoding convertfrom utf-8 \xf0\x9f\x92\x80]
set grin [encoding convertfrom utf-8 \xf0\x9f\x98\x80]
test find-8a "names of characters above U+FFFF come back, beside any bytes too" -body {
    set found {}
    foreach {name octal} [list $skull {\360\237\222\200} $grin {\360\237\230\200} \
                              \udc80$skull\udcff$grin\udcff {\200\360\237\222\200\377\360\237\230\200\377}] {
        exec sh -c ": >\"\$(printf 'a$octal.v')\""
        set path [gen find a$name.v]
        lappend found [string equal $path $project/a$name.v] [string equal [gen find $path] $path] \
            [string equal [gen cached a$name.v] $path]
        exec sh -c "rm \"\$(printf 'a$octal.v')\""
    }
    set found
} -result [lrepeat 9 1]
test find-9 "in a system encoding of single bytes every byte is a character" -body {
    encoding system iso8859-1
    close [open caf\u00e9.v w]
    set found [gen find caf\u00e9.v]
    list [file exists $found] [string equal $found $project/caf\u00e9.v]
} -cleanup {file delete $found; encoding system utf-8} -result {1 1}
test find-10 "a removed directory is nothing worse than empty" -body {
    file mkdir gone
    cd gone
    exec rmdir $project/gone
    gen reset
    list [gen find no_such_file.v] [file tail [gen find mux.sv]]
} -cleanup {
    cd $project
    gen project -project $project -db db -project-libs lib -user-libs ../home/ada/lib
} -result {{} mux.sv}

test find-11 "options may stand behind the name too" {
    list [gen find cells.v -eda] [expr {[gen find adder.v -all] eq [gen find -all adder.v]}] \
        [gen include segments.vh -from inc/display.vh -alias /copy/display.vh -beside beside] $beside \
        [gen include -from inc/display.vh segments.vh -alias /copy/display.vh] \
        [expr {[gen sources counter -shipped -trace] eq [gen sources -shipped -trace counter]}] \
        [gen number "255 ns" -radix 16] [gen compare A a -nocase] [gen compare -a -b] \
        [gen find -x] [gen find -- -all]
} [list $root/eda/mentor/cells.v 1 inc/segments.vh /copy/segments.vh inc/segments.vh 1 \
       {value 255 digits ff used 3} 0 -1 {} {}]
test find-12 "what stands behind the name and is no option" {
    list [failure {gen find adder.v -x}] [failure {gen find adder.v mux.sv}] \
        [failure {gen find -eda cells.v -all mux.sv}] [failure {gen include segments.vh -from}] \
        [failure {gen find -- adder.v -all}]
} [set usage "gen find ?-eda? ?-cached|-all|-trace? name"; list \
       [list "unknown option \"-x\": should be \"$usage\"" {KORVANE OPTION -x}] \
       [list "wrong # args: should be \"$usage\"" {TCL WRONGARGS}] \
       [list "wrong # args: should be \"$usage\"" {TCL WRONGARGS}] \
       [list "option \"-from\" wants a value: should be \"[dict get $::korvane_gen::usage include]\"" {TCL WRONGARGS}] \
       [list "wrong # args: should be \"$usage\"" {TCL WRONGARGS}]]
test find-13 "a reset frees the libraries and keeps the cache" -body {
    gen cache clear
    gen cached adder.v
    gen reset
    set found [gen project]
    list [dict get $found project_libraries] [dict get $found user_libraries] [gen cache size]
} -cleanup {gen project -db db -project-libs lib -user-libs ../home/ada/lib} -result {{} {} 1}
test find-14 "candidates of the other lookups" {
    list [pick [gen find -eda -all cells.v] standing group path] \
        [pick [gen sources -shipped -all adder] standing path] \
        [llength [gen sources -all adder]] [pick [gen include -all -from inc/display.vh segments.vh] standing path]
} [list [list [list wins {EDA libraries} $root/eda/mentor/cells.v]] \
       [list [list wins $root/libraries/parablocks/arithmetic/adder.v]] 6 {{wins inc/segments.vh}}]
test find-15 "options that exclude each other" {
    lmap call {
        {start -root / -executable gen} {find -all -trace a} {find -cached -all a} {find -eda -cached a}
        {include -all -trace a} {include -alias b a} {sources -all -trace a} {condition -tree -tokens a}
        {condition -diagnostics -tree a}
    } {
        failure {gen {*}$call}
    }
} [lmap name {start find find find include include sources condition condition} {
    list "wrong # args: should be \"[dict get $::korvane_gen::usage $name]\"" {TCL WRONGARGS}
}]

proc resident {} {
    set file [open /proc/self/statm]
    set pages [lindex [read $file] 1]
    close $file
    return $pages
}
test memory-1 "a hundred thousand lookups need no more of it" -body {
    proc ask {count} {
        for {set i 0} {$i < $count} {incr i} {
            gen cached adder.v
            gen lexcompare {data[10]} {data[9]}
            gen find -trace adder.v
            catch {gen find "a\0b"}
        }
        resident
    }
    set before [ask 2000]
    expr {[ask 100000] - $before < 256}
} -result 1

# The counts of a histogram stay with the process, which is why it has one bin.
test memory-2 "an object takes all that it holds along" -body {
    proc make {count command} {
        for {set i 0} {$i < $count} {incr i} {
            [{*}$command] destroy
        }
        resident
    }
    lmap command {{gen undo db} {gen flags} {gen histogram 0 1 1} {gen stopwatch}} {
        set before [make 500 $command]
        expr {[make 20000 $command] - $before < 300}
    }
} -result {1 1 1 1}

test interpreters-1 "a second one shares the state of the process" -body {
    interp create other
    other eval [list lappend auto_path $build/tcl]
    other eval {package require korvane_gen}
    other eval {gen finish}
    string equal [other eval {gen find adder.v}] [gen find adder.v]
} -cleanup {interp delete other} -result 1

test names-1 "files" -body {
    gen project -db /p/db/
    set made [gen temp -directory . -prefix report -number 42]
    list [gen database-file chip] [llength [gen names]] $made \
        [failure {gen temp -directory /nowhere}]
} -cleanup {file delete $made; gen project -db db} -result {/p/db/chip.pdb 30 ./rep0000002a.tmp {{no file can be created in /nowhere: No such file or directory} {KORVANE FAILED}}}
test names-2 "the 64-bit tools are in front in the script alone" -body {
    set ::env(KORVANE_PLATFORM) linux
    set before $::env(PATH)
    list [gen env fitter {string range $::env(PATH) 0 [string length $root]+9}] \
        [string equal $::env(PATH) $before] [gen env no_such_tool {string equal $::env(PATH) $before}] \
        [catch {gen env fitter {error oops}}] [string equal $::env(PATH) $before] [gen env -wanted]
} -result [list $root//linux64/ 1 1 1 1 0]

test names-3 "break and return in the script are the caller's" -body {
    set env(KORVANE_PLATFORM) linux
    set rounds 0
    foreach round {1 2} {incr rounds; gen env fitter {break}}
    proc returning {} {gen env fitter {return inside}; return behind}
    list $rounds [returning] [gen env fitter {set rounds}]
} -cleanup {rename returning {}} -result {1 inside 1}

test condition-1 "prefix form" {
    gen condition "(|top|a = 1) && (time > 10ns)"
} {LOGICAL_AND(EQUAL_TO(HPATH(|top|a),BUS(1)),TIME_GT(10ns))}
test condition-2 "diagnostics are an error" {
    failure {gen condition "a == 1"}
} {{Missing left hand side of equation} {KORVANE CONDITION {{Missing left hand side of equation}} EQUAL_TO(HPATH(a),) {}}}
test condition-3 "or an answer" {
    gen condition -diagnostics "a == 1"
} {prefix EQUAL_TO(HPATH(a),) diagnostics {{Missing left hand side of equation}} reports {}}
test condition-4 "internal errors come with them, or alone with what is answered all the same" {
    set reports [dict get [gen condition -diagnostics "a) = (b"] reports]
    list [llength [lindex [dict get [failed_with {gen condition "a) = (b"}] -errorcode] 4]] \
        [lindex [pick $reports source] 0] \
        [lindex [dict get [failed_with {gen condition )}] -errorcode] 3]
} {1 gen_bp_parser {{} {}}}
test condition-5 "tokens and tree" {
    list [pick [gen condition -tokens "a = time"] name] [pick [gen condition -tree "a = 1"] depth text]
} {{path = time} {{0 EQUAL_TO} {1 {HPATH a}} {1 {BUS 1}}}}
test condition-6 "without a prefix form there is no tree, but the error of the condition" {
    list [failure {gen condition -tree "a == 1"}] [lindex [failure {gen condition -tree )}] 1 1] \
        [llength [lindex [dict get [failed_with {gen condition "a) = (b" -tree}] -errorcode] 4]]
} {{{Missing left hand side of equation} {KORVANE CONDITION {{Missing left hand side of equation}} EQUAL_TO(HPATH(a),) {}}} INTERNAL 1}

test text-1 "natural order" {
    list [gen lexsort {data[10] data[9] DATA[1] a01 a1}] [gen lexsort -nocase {b10 B2 b1}] \
        [gen lexsort -unique {a2 A a10 a2}] [gen lexsort -unique -nocase {a b A}] [gen lexsort -nocase -decreasing {b10 B2 b1}] \
        [lsort -command {gen lexcompare} {x10 x9}] [gen lexcompare -nocase A a]
} {{{DATA[1]} a1 a01 {data[9]} {data[10]}} {b1 B2 b10} {A a2 a10} {A b} {b10 B2 b1} {x9 x10} 0}
test text-2 "the rest" {
    list [gen compare file10 file9] [gen compare -nocase A a] [gen fold gr\u00f6A] [gen fold -upper a] [gen trim " a "] \
        [gen trim -white-space " a\t"] [gen number -radix 16 "-255 ns"] [gen number x] [gen real 1.5x] \
        [gen wildcard a*.v] [gen wildcard a*.v alu.v top.v ADD.V] [gen sanitise "a b.v  "] \
        [expr {[gen sanitise -checksum "a b.v  "] == [gen checksum a_bLv]}] [gen checksum ""] [gen hash-size 14]
} [list [expr {49 - 57}] 0 gr\u00f6a A a a {value -255 digits ffffff01 used 4} {} {value 1.5 used 3} \
       {^[aA].*\.[vV]$} {alu.v ADD.V} a_bLv 1 0 31]
test text-2c "any number of names" {
    llength [gen wildcard a* {*}[lrepeat 100001 a]]
} 100001
test text-2a "characters above U+FFFF and bytes that are no UTF-8" {
    # The checksums are those of the bytes.
    encoding system iso8859-1
    set sums [lmap bytes [list \xf0\x9f\x92\x80 \xf0\x9f\x98\x80 \x80\xf0\x9f\x92\x80\xff\xf0\x9f\x98\x80] {gen checksum $bytes}]
    encoding system utf-8
    set texts [list $skull $grin \udc80$skull\udcff$grin]
    list [expr {[lmap text $texts {gen checksum $text}] eq $sums}] \
        [lmap text $texts {string equal [gen fold -upper a$text] A$text}] \
        [lmap text $texts {string equal [gen message %1 $text] $text}]
} {1 {1 1 1} {1 1 1}}
test text-2b "texts that look like numbers stay as they are" -body {
    set made [gen temp -directory . -prefix 0x1 -number 42]
    list [gen sanitise 0x10] [gen wildcard * 1.50 0x10 007] [file tail [gen database-file 007 0x10]] $made \
        [dict get [gen project -db 0x10] database] [gen find 1e3]
} -cleanup {file delete $made; gen project -db db} -result {0x10 {1.50 0x10 007} db007.0x10 ./0x10000002a.tmp 0x10 {}}
test text-3 "a text without room for its answer is an error" {
    exec sh -c {ulimit -v 230000; exec tclsh8.6 - "$1"} sh $build << {
        lappend auto_path [lindex $argv 1]/tcl
        package require korvane_gen
        catch {gen fold [string repeat A 100000000]} message options
        puts [list $message [dict get $options -errorcode] [gen fold STILL]]
    }
} {{out of memory} {KORVANE NO_MEMORY} still}
test text-4 "messages" {
    list [gen message {%2!d! errors in %1, %3!.1f!%%} top.v 3 97.25] [gen message -inserts {%1!d!}]
} {{3 errors in top.v, 97.2%} {{insert 1 conversion %d}}}

test time-1 "units and clock" {
    list [pick [gen units time] short_name] [dict get [lindex [gen units frequency] 3] magnitude] \
        [gen time elapsed 90061] [gen time format 100%%] [gen time format ""] \
        [expr {[dict get [gen time now] seconds] > 0}]
} {{s ms us ns ps} 9 1:01:01:01 100% {} 1}
test time-2 "a stopwatch" -body {
    set watch [gen stopwatch]
    $watch start
    $watch stop
    set seconds [$watch seconds]
    $watch reset
    list [string is double $seconds] [$watch lap]
} -cleanup {$watch destroy} -result {1 {0.000000 seconds}}
test machine-1 "machine, report and notices" {
    set machine [gen machine 127.0.0.1]
    list [dict get $machine os_name] [dict get $machine ip_address] [gen modules] \
        [llength [gen modules -modules -memory]] [string match "tcl  *" [lindex [gen modules -memory] 0]] [string match {-- Copyright*} [lindex [gen legal -prefix "-- " banner] 0]] \
        [expr {[gen legal warning] ne ""}] [llength [gen do-not-edit "# "]]
} {Linux 127.0.0.1 {} 2 1 1 1 3}

test undo-1 "an undo file" -body {
    set undo [gen undo db]
    $undo section "Move node" "one node" {
        $undo undo "undo_move a" "restores a"
        $undo redo "redo_move a"
    }
    set file [open [$undo commit]]
    set lines [split [read $file] \n]
    close $file
    list [lrange $lines 0 1] [failure {$undo section "Nothing in it" "" {}}] [failure {[gen undo /nowhere] commit}]
} -cleanup {$undo destroy; file delete db/undo_redo.txt} -result {{{Move node} {one node}} {{a section needs a title and a command} {KORVANE ARGUMENT section}} {{/nowhere/undo_redo.txt: No such file or directory} {KORVANE FAILED}}}
test undo-2 "a command outside a section" -body {
    set undo [gen undo db]
    set found [list [failure {$undo undo lost}]]
    catch {$undo section "Fails" "" {
        $undo undo kept
        error oops
    }} oops
    lappend found $oops [failure {$undo redo lost}]
    foreach once {1} {
        $undo section "Is left" "" {
            $undo undo kept
            break
        }
        error "not left"
    }
    $undo section "Works" "" {$undo undo kept}
    set file [open [$undo commit]]
    lappend found [gets $file] [failure {$undo undo lost}]
    close $file
    set found
} -cleanup {$undo destroy; file delete db/undo_redo.txt} -result [
    set outside {{section has not begun or is over} {KORVANE ARGUMENT section}}
    list $outside oops $outside Works $outside]
test flags-1 "flags" -body {
    set flags [gen flags]
    set found [list [$flags add alpha] [$flags add beta] [$flags describe 3] [$flags find beta]]
    $flags remove 1
    lappend found {*}[lrange [failure {$flags find gamma}] 0 0] [$flags statistics] [$flags swept] \
        [dict get [lindex [$flags slots] 0] state]
} -cleanup {$flags destroy} -result {1 2 {(0x3) alpha | beta} 2 {couldn't find flag 'gamma'} {used 1 dirty 0 clean 31} {} dirty}
test histogram-1 "a histogram" -body {
    set bins [gen histogram 0 10 5]
    $bins add 0 1.999 2 10 -1 13 nan
    list [$bins size] [pick [$bins bins] count] [$bins outside] [$bins bin 10] [$bins bin 11]
} -cleanup {$bins destroy} -result {4 {2 1 0 0 1} {below 1 above 1 not_a_number 1} 4 {}}

test documents-1 "the list of subcommands has each as it is called" {
    set file [open [file join [file dirname [info script]] ../../docs/tcl.md]]
    set shown [string map {\\| |} [read $file]]
    close $file
    lmap usage [dict values $::korvane_gen::usage] {if {[string first "\n| `$usage` | " $shown] < 0} {set usage} continue}
} {}
# Every subcommand says how it is called.
foreach {name usage} $::korvane_gen::usage {
    if {$name ni {message wildcard}} {
        test wrong-$name "too many arguments for gen $name" -body {
            failure [list gen $name {*}[lrepeat 12 {a b}]]
        } -match glob -result {{*gen *} {* *}}
    }
}
set subcommands [dict keys $::korvane_gen::usage]
test wrong-1 "which argument, and why" {
    list [failure {gen find "a\0b"}] [failure {gen time elapsed soon}] [failure {gen time elapsed 99999999999}] \
        [failure {gen number -radix 37 1}] [failure {gen message %2 a}] [failure {gen message %1!d! x}] \
        [failure {gen histogram 1 0}] [failure {gen wildcard a\{ a}] [failure {gen find -x a}] \
        [failure {gen lexcompare a}] [failure {gen lexcompare -nocase a "b\0c"}] [failure {gen message %1 "a\0b"}] \
        [failure {gen nothing}] [failure {gen time elapsed 18446744073709551615}]
} [list {{argument "name" contains a null character} {KORVANE ARGUMENT name}} \
       {{argument "seconds" is no integer} {KORVANE ARGUMENT seconds}} \
       {{argument "seconds" does not fit 32 bits} {KORVANE ARGUMENT seconds}} \
       {{radix is not from 2 to 36} {KORVANE ARGUMENT radix}} \
       {{argument 2 is missing} {KORVANE ARGUMENT argument}} \
       {{argument 1, "x", is nothing that %d can print} {KORVANE ARGUMENT argument}} \
       {{low is not below high} {KORVANE ARGUMENT low}} \
       {{pattern: + ^ $ { } are passed on as they are, which makes no valid expression} {KORVANE ARGUMENT pattern}} \
       {{unknown option "-x": should be "gen find ?-eda? ?-cached|-all|-trace? name"} {KORVANE OPTION -x}} \
       {{wrong # args: should be "gen lexcompare ?-nocase? first second"} {TCL WRONGARGS}} \
       {{argument "second" contains a null character} {KORVANE ARGUMENT second}} \
       {{argument "argument" contains a null character} {KORVANE ARGUMENT argument}} \
       [list "unknown or ambiguous subcommand \"nothing\": must be [join [lrange $subcommands 0 end-1] {, }], or [lindex $subcommands end]" \
            {KORVANE SUBCOMMAND nothing}] \
       {{argument "seconds" does not fit 32 bits} {KORVANE ARGUMENT seconds}}]
test wrong-1a "a subcommand may be shortened as long as it is the only one" {
    list [gen checks ""] [gen lexc a b] [gen fol ABC] [failure {gen checks}] [failure {gen fol}] \
        [lindex [failure {gen lex a b}] 1] [lindex [failure {gen ""}] 1] [lindex [failure {gen f*d ABC}] 1] [failure {gen}]
} {0 -1 abc {{wrong # args: should be "gen checksum text"} {TCL WRONGARGS}} {{wrong # args: should be "gen fold ?-upper? text"} {TCL WRONGARGS}} {KORVANE SUBCOMMAND lex} {KORVANE SUBCOMMAND {}} {KORVANE SUBCOMMAND f*d} {{wrong # args: should be "gen subcommand ?argument ...?"} {TCL WRONGARGS}}}
# The names of a command's parameters, as it says itself.
proc parameters {command} {
    regexp {should be "\S+ ?(.*)"$} [lindex [failure [list $command {*}[lrepeat 9 x]]] 0] -> names
    lmap name $names {string trim $name ?}
}
test wrong-2 "every function of the interface names each argument that is wrong" -body {
    # What is no text, with a good value.
    set good {
        number 1 radix 10 library 1 group 1 seconds 1 ignore_case 0 upper 0 white_space 0 part 0 shipped_only 0 eda 0 all 0
        modules 0 details 0 memory 0 notice 0 redo 0 mask 1 low 0.0 high 1.0 bins 1 item 0.5 handle none
    }
    foreach {name command} {
        watch stopwatch_create undo {undo_create .} flags flags_create histogram {histogram_create 0 1 1}
    } {
        dict set good $name [namespace eval ::korvane_gen::c $command]
    }
    set asked 0
    set complaints {}
    foreach command [lsort [info commands ::korvane_gen::c::*]] {
        if {[string match *::message $command]} continue
        set names [parameters $command]
        foreach wrong $names {
            set words [lmap name $names {
                if {$name eq $wrong} {
                    expr {[dict exists $good $name] ? "x" : "a\0b"}
                } else {
                    expr {[dict exists $good $name] ? [dict get $good $name] : "text"}
                }
            }]
            lassign [failure [list $command {*}$words]] message code
            incr asked
            if {$code ne [list KORVANE ARGUMENT $wrong] || ![string match "argument \"$wrong\" *" $message]} {
                lappend complaints [list $command $wrong $message]
            }
        }
    }
    list [expr {$asked > 100}] $complaints
} -result {1 {}}
test wrong-3 "one that is missing or too many, too" -body {
    foreach command [info commands ::korvane_gen::c::*] {
        lassign [failure [list $command {*}[lrepeat 9 x]]] message code
        if {$code ne {TCL WRONGARGS}} {
            lappend others $command
        }
    }
    list $others [failure ::korvane_gen::c::message] [failure ::korvane_gen::c::find]
} -result {::korvane_gen::c::message {{argument "format" is missing} {KORVANE ARGUMENT format}} {{wrong # args: should be "::korvane_gen::c::find name"} {TCL WRONGARGS}}}

tcltest::configure -verbose {error}
set failed $tcltest::numTests(Failed)
puts "$tcltest::numTests(Passed) passed, $failed failed"
exit [expr {$failed != 0 || $tcltest::numTests(Passed) == 0}]
