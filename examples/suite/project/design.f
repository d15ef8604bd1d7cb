// What a simulator is to read, as `gen_query filelist design.f --includes` writes it.
adder.v
carry.v                 // of the shipped libraries
src/display/display.sv
