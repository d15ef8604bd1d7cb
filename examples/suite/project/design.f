// The files of this project for a simulator, which gen_query filelist looks up.
adder.v
carry.v                 // of the shipped libraries
src/display/display.sv
