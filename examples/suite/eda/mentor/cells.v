// Simulation models of the cells.
`timescale 1ns / 10ps
module lut4_model (input [3:0] a, output o);
  parameter [15:0] TABLE = 0;
  assign #1.2 o = TABLE[a];
endmodule
