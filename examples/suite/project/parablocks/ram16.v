// Written by the parablock wizard: ram16, depth 16, width 8.
module ram16 (input clk, input write, input [3:0] at, input [7:0] in, output [7:0] out);
  reg [7:0] store[0:15];
  assign out = store[at];
  always @(posedge clk) if (write) store[at] <= in;
endmodule
