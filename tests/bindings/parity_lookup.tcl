# Installation, project, lookup, names of files.

set project {--project {-project 1} --db {-db 1} --output {-output 1} --project-libs {-project-libs 1} --user-libs {-user-libs 1}}
set view {--trace {trace 0} --all {all 0}}
proc apply_project {} {
    gen project {*}[dict filter $::options key -*]
}

# Whether there is a file of that name, and its record, by the words of a command.
proc looked_up {command name} {
    set known [gen cache size]
    set beside ""
    set path [gen {*}$command {*}[if {[lindex $command 0] eq "include"} {list -beside beside}] -- $name]
    set is_kept [expr {[has cached] && [gen cache size] == $known}]
    set command [lsearch -all -inline -not -exact $command -cached]
    set view [expr {[has all] ? "-all" : "-trace"}]
    set checks [expr {$is_kept ? {} : [gen {*}$command $view -- $name]}]
    set hits [lmap row $checks {expr {[dict get $row there] ? $row : [continue]}}]
    if {[llength $hits]} {
        set path [dict get [lindex $hits 0] path]
    }
    set group [expr {$path eq "" ? "" : [llength $hits] ? [dict get [lindex $hits 0] group] : "cache"}]
    set record [dict create name [s $name] path [s $path] group [s $group]]
    if {[lindex $command 0] eq "include"} {
        dict set record beside_alias [s $beside]
    } else {
        dict set record in_project [s [expr {[string match /* $path] ? [gen relative $path] : ""}]]
    }
    if {[has trace]} {dict set record checks [rows $checks {group there path}]}
    if {[has all]} {dict set record candidates [rows $hits {standing group path}]}
    list [expr {$path ne ""}] [d $record [dict keys $record]] $path
}
proc look_up_all {command} {
    if {"-" in $::rest} {return [answer_each $::rest [list looked_up $command]]}
    set files {}
    set paths {}
    foreach name $::rest {
        lassign [looked_up $command $name] found record path
        lappend files $record
        if {$found} {lappend paths $path}
    }
    set answer [dict create files [l $files]]
    if {![has all]} {dict set answer paths [texts $paths]}
    list [expr {[llength $paths] == [llength $files]}] [d $answer {files paths}]
}

proc answer_where {} {
    parse {}
    want 0 0
    set found [gen where]
    set project [gen project]
    set handed_over [dict create installation_root [dict get $found installation_root] \
        file_name [dict get $found file_name] database_directory [dict get $project database] \
        output_directory [dict get $project output] graphical_shell [dict get $found graphical_shell]]
    dict set found seen_by_the_memory_library [d $handed_over]
    list 1 [d $found seen_by_the_memory_library]
}
proc answer_installation {} {
    parse {}
    want 0 0
    set found [gen installation]
    dict set found device_files [texts [dict get $found device_files]]
    dict set found libraries [rows [dict get $found libraries]]
    list 1 [d $found {device_files libraries}]
}
proc answer_project {} {
    parse $::project
    want 0 0
    set found [apply_project]
    set lists [dict keys $found *_libraries]
    foreach key $lists {dict set found $key [texts [dict get $found $key]]}
    list 1 [d $found $lists]
}
proc answer_find {} {
    parse [dict merge $::project $::view {--eda {eda 0} --cached {cached 0}}]
    want 1
    if {[has cached] && ([has eda] || [has all])} {error usage}
    apply_project
    look_up_all [list find {*}[if {[has eda]} {list -eda}] {*}[if {[has cached]} {list -cached}]]
}
proc answer_include {} {
    parse [dict merge $::project $::view {--from {from 1} --alias {alias 1}}]
    want 1
    apply_project
    set command include
    foreach name {from alias} {
        if {[has $name]} {lappend command -$name [dict get $::options $name]}
    }
    look_up_all $command
}
proc sources_of {unit} {
    set command [list sources {*}[if {[has shipped]} {list -shipped}]]
    set answer [dict create unit [s $unit] file_type_order [texts [gen file-types]]]
    if {[has all]} {
        set checks [gen {*}$command -all -- $unit]
        dict set answer candidates [rows $checks {standing group path}]
        return [list [expr {[llength $checks] != 0}] [d $answer [dict keys $answer]]]
    }
    if {[has trace]} {dict set answer checks [rows [gen {*}$command -trace -- $unit] {group there path}]}
    set files [gen {*}$command -- $unit]
    dict set answer files [rows $files]
    list [expr {[llength $files] != 0}] [d $answer [dict keys $answer]]
}
proc answer_sources {} {
    parse [dict merge $::project $::view {--shipped {shipped 0}}]
    want 1 1
    apply_project
    if {$::rest eq "-"} {return [answer_each - sources_of]}
    sources_of {*}$::rest
}
proc answer_names {} {
    parse {--project {project 1} --db {db 1} --database-file {file 1} --exists {exists 0}}
    want 0 0
    set found [gen project -project [expr {[has project] ? [dict get $::options project] : [pwd]}]]
    gen project -db [expr {[has db] ? [dict get $::options db] : "[dict get $found project]db/"}]
    set file [gen database-file [expr {[has file] ? [dict get $::options file] : "top"}]]
    set all [list {*}[gen names] [dict create family database function gen_generate_pdb_filename path $file]]
    set any 1
    if {[has exists]} {
        set all [lmap row $all {dict set row exists [file exists [dict get $row path]]}]
        set any [expr {1 in [lmap row $all {dict get $row exists}]}]
    }
    list $any [d [dict create names [rows $all]] names]
}
proc answer_temp {} {
    parse {--directory {-directory 1} --prefix {-prefix 1} --number {-number 1}}
    want 0 0
    try {
        list 1 [d [dict create path [gen temp {*}$::options]]]
    } trap {KORVANE FAILED} {} {
        list 0 [d {path ""}]
    }
}
proc search_paths {} {
    global env
    d [dict create path $env(PATH) ld_library_path [expr {
        [info exists env(LD_LIBRARY_PATH)] ? $env(LD_LIBRARY_PATH) : ""}]]
}
proc answer_env {} {
    parse {--platform {KORVANE_PLATFORM 1} --bit-type {KORVANE_BIT_TYPE 1}}
    want 1 1
    array set ::env $::options
    set before [search_paths]
    set inside [gen env {*}$::rest search_paths]
    set changed [expr {$inside ne $before}]
    list $changed [d [dict create 64_bit_wanted [gen env -wanted] changed $changed \
        for_the_tool $inside restored [search_paths]] {for_the_tool restored}]
}
