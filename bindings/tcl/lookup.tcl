# The project, and the files that names mean.

proc ::korvane_gen::sub::project {args} {
    options project {-project 1 -db 1 -output 1 -project-libs 1 -user-libs 1} $args 0 0
    foreach {option set} {
        -project set_project -db set_database -output set_output
        -project-libs set_project_libraries -user-libs set_user_libraries
    } {
        if {[dict exists $given $option]} {
            c::$set [dict get $given $option]
        }
    }
    set directories [lindex [c::project] 0]
    set answer [dict filter $directories key project database output parablocks]
    # By the numbers of gen_c_group.
    foreach {key group} {project_libraries 2 user_libraries 3 shipped_libraries 5 eda_libraries 6} {
        dict set answer $key [column [c::directories $group] directory]
    }
    return $answer
}

proc ::korvane_gen::sub::relative {args} {
    c::relative_to_project [lindex [options relative {} $args 1 1] 0]
}

proc ::korvane_gen::sub::file-types {args} {
    options file-types {} $args 0 0
    column [c::file_types] extension
}

proc ::korvane_gen::sub::reset {args} {
    options reset {} $args 0 0
    c::clear_paths
    return
}

proc ::korvane_gen::sub::find {args} {
    lassign [options find {-eda 0 -cached 0 -all 0 -trace 0} $args 1 1] name
    set eda [dict exists $given -eda]
    dict unset given -eda
    if {[dict size $given] > 1 || ($eda && [dict exists $given -cached])} {
        wrong find
    }
    switch -- [lindex $given 0] {
        -cached {return [c::find_cached $name]}
        -all {return [there [c::trace_find $name $eda 1]]}
        -trace {return [c::trace_find $name $eda 0]}
        default {if {$eda} {c::find_eda $name} {c::find $name}}
    }
}

proc ::korvane_gen::sub::include {args} {
    lassign [options include {-from 1 -alias 1 -beside 1 -all 0 -trace 0} $args 1 1] name
    set all [dict exists $given -all]
    if {$all && [dict exists $given -trace] || ([dict exists $given -alias] && ![dict exists $given -from])} {
        wrong include
    }
    set more {}
    foreach option {-from -alias} {
        if {[dict exists $given $option]} {
            lappend more [dict get $given $option]
        }
    }
    if {$all} {
        return [there [c::trace_include $name 1 {*}$more]]
    }
    if {[dict exists $given -trace]} {
        return [c::trace_include $name 0 {*}$more]
    }
    lassign [c::include $name {*}$more] path beside
    if {[dict exists $given -beside]} {
        upvar 1 [dict get $given -beside] variable
        set variable $beside
    }
    return $path
}

proc ::korvane_gen::sub::sources {args} {
    lassign [options sources {-shipped 0 -all 0 -trace 0} $args 1 1] unit
    set shipped [dict exists $given -shipped]
    if {[dict exists $given -all] && [dict exists $given -trace]} {
        wrong sources
    }
    if {[dict exists $given -all]} {
        return [there [c::trace_sources $unit $shipped 1]]
    }
    if {[dict exists $given -trace]} {
        return [c::trace_sources $unit $shipped 0]
    }
    c::sources $unit $shipped
}

proc ::korvane_gen::sub::cache {args} {
    switch -- $args {
        clear {c::clear_cache; return}
        size {return [c::cache_size]}
        default {wrong cache}
    }
}
