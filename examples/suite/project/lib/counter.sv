// The team's counter, kept for its tests.
module counter (input logic clk, input logic button, output logic [6:0] segments);
  assign segments = '1;
endmodule
