`include "inc/display.vh"

module display (input logic [3:0] value, output logic [`SEGMENTS-1:0] segments);
  logic [`SEGMENTS-1:0] lit;
  always_comb
    case (value)
      4'h0: lit = 7'b0111111;
      4'h1: lit = 7'b0000110;
      4'h2: lit = 7'b1011011;
      4'h3: lit = 7'b1001111;
      default: lit = 7'b1000000;
    endcase
  assign segments = lit ~^ {`SEGMENTS{`SEGMENT_ON}};
endmodule
