module fifo #(parameter int WIDTH = 8, parameter int DEPTH = 16) (
    input logic clk,
    input logic put,
    input logic take,
    input logic [WIDTH-1:0] data_in,
    output logic [WIDTH-1:0] data_out,
    output logic empty);
  localparam int BITS = $clog2(DEPTH);
  logic [WIDTH-1:0] store[DEPTH];
  logic [BITS:0] first = 0, last = 0;
  assign empty = first == last;
  assign data_out = store[first[BITS-1:0]];
  always_ff @(posedge clk) begin
    if (put) begin
      store[last[BITS-1:0]] <= data_in;
      last <= last + 1;
    end
    if (take && !empty) first <= first + 1;
  end
endmodule
