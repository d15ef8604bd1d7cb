// Counts the presses of a button and shows them.
`include "settings.vh"
`include "inc/display.vh"

module counter (input clk, input button, output [`SEGMENTS-1:0] segments);
  wire pressed;
  reg [`COUNT_BITS-1:0] count = 0;
  wire [`COUNT_BITS-1:0] next;

  debounce debounce (.clk(clk), .button(button), .pressed(pressed));
  adder #(.WIDTH(`COUNT_BITS)) adder (.a(count), .b(1), .sum(next), .c_out());
  display display (.value(count[3:0]), .segments(segments));

  always @(posedge pressed) count <= next;
endmodule
