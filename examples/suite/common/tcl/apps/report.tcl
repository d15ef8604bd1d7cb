# Prints the source files of a unit, most preferred first.
proc report {unit} {
    puts [exec gen_query sources $unit]
}
