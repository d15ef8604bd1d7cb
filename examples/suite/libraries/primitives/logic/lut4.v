// One logic cell as a table of sixteen bits.
module lut4 #(parameter [15:0] TABLE = 16'h0000) (input [3:0] a, output o);
  assign o = TABLE[a];
endmodule
